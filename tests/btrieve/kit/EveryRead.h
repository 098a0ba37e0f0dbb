// Every read there is on an open file of fixed-length records: by place and along each key, both
// ways, singly and extended, by value, position and percentage.
#pragma once

#include <functional>
#include <set>

#include "Calls.h"
#include "Descriptor.h"

namespace btrieve::test {

inline constexpr int kMostSteps = 20000;  // far above the records of any file used here
inline constexpr Status kHighestStatus = 175;

struct FileShape {
  int keys = 1;
  uint16_t recordLength = 0;
  std::function<bool(const Bytes&)> wasWritten;  // whether a record read is one of the file's
};

class EveryRead {
 public:
  explicit EveryRead(FileShape shape) : shape_(std::move(shape)) {}

  // The statuses met. An empty text when every record read was one that was written, every walk
  // came to an end and every status is one there is; else what was not so.
  std::set<Status> met = {};
  std::string Run(Client& client, int block) {
    client_ = &client;
    block_ = block;
    fault_.clear();
    Call(kStat, {.room = 4000});
    positions_.clear();
    Walk(kStepFirst, kStepNext, 0);
    Walk(kStepLast, kStepPrevious, 0);
    WalkExtended(kStepFirst, kStepNextExtended, 0);
    WalkExtended(kStepLast, kStepPreviousExtended, 0);
    ReadByPercentage(-1);
    for (int key = 0; key < shape_.keys; ++key) {
      keyValues_.clear();
      Walk(kGetFirst, kGetNext, key);
      Walk(kGetLast, kGetPrevious, key);
      WalkExtended(kGetFirst, kGetNextExtended, key);
      WalkExtended(kGetLast, kGetPreviousExtended, key);
      ReadByValue(key);
      ReadByPercentage(key);
    }
    ReadByPosition();
    return fault_;
  }

 private:
  CallOut Call(int operation, CallIn in) {
    CallOut out = client_->Call(operation, block_, in);
    met.insert(out.status);
    if (out.status < 0 || out.status > kHighestStatus) Note("status " + std::to_string(out.status));
    return out;
  }
  void Walk(int first, int next, int key) {
    CallOut out = Call(first, {.room = shape_.recordLength, .keyNumber = key});
    for (int steps = 0; out.status == 0; ++steps) {
      if (steps == kMostSteps) return Note("a walk without end");
      Look(out);
      if (steps % 16 == 0) {
        keyValues_.push_back(out.key);
        const CallOut place = Call(kGetPosition, {.room = 4});
        positions_.push_back(NumberAt<uint32_t>(place.data, 0));
      }
      out = Call(next, {.room = shape_.recordLength, .keyNumber = key});
    }
  }
  void WalkExtended(int first, int next, int key) {
    const Bytes request =
        DescriptorBytes({.rejects = 100, .wanted = 25, .fields = {{shape_.recordLength, 0}}});
    CallOut out = Call(first, {.room = shape_.recordLength, .keyNumber = key});
    for (int steps = 0; out.status == 0; ++steps) {
      if (steps == kMostSteps) return Note("an extended walk without end");
      out = Call(next, {.data = request, .room = 4000, .keyNumber = key});
      if (out.status == 0 || out.status == 9) LookAtReply(out.Returned());
    }
  }
  void ReadByPosition() {
    for (const uint32_t position : positions_) {
      for (int key = -1; key < shape_.keys; ++key) {
        Look(Call(kGetDirect,
                  {.data = Number(position), .room = shape_.recordLength, .keyNumber = key}));
      }
      Call(kFindPercentage, {.data = Number(position), .keyNumber = -1});
    }
  }
  void ReadByPercentage(int key) {
    for (const uint16_t share : {0, 1, 2500, 5000, 9999, 10000}) {
      Look(Call(kGetByPercentage,
                {.data = Number(share), .room = shape_.recordLength, .keyNumber = key}));
    }
  }
  void ReadByValue(int key) {
    for (const Bytes& value : keyValues_) {
      for (int operation = kGetEqual; operation <= kGetLast; ++operation) {
        Look(Call(operation, {.room = shape_.recordLength, .key = value, .keyNumber = key}));
        Call(operation + kGetKey, {.key = value, .keyNumber = key});
      }
      Call(kFindPercentage, {.room = 4, .key = value, .keyNumber = key});
    }
  }
  void Note(const std::string& fault) {
    if (fault_.empty()) fault_ = fault;
  }
  void Look(const CallOut& out) {
    if (out.status == 0 && !shape_.wasWritten(out.Returned())) {
      Note("a record nobody wrote: " + ToHex(out.Returned()));
    }
  }
  void LookAtReply(const Bytes& reply) {
    size_t at = 2;
    for (int left = NumberAt<uint16_t>(reply, 0); left > 0; --left) {
      const size_t length = NumberAt<uint16_t>(reply, at);
      if (at + 6 + length > reply.size()) return Note("a reply that is cut off");
      const auto start = reply.begin() + static_cast<ptrdiff_t>(at) + 6;
      const Bytes record(start, start + static_cast<ptrdiff_t>(length));
      if (!shape_.wasWritten(record)) Note("a record nobody wrote: " + ToHex(record));
      at += 6 + length;
    }
  }

  FileShape shape_;
  Client* client_ = nullptr;
  int block_ = 0;
  std::string fault_;
  std::vector<Bytes> keyValues_;
  std::vector<uint32_t> positions_;
};

}  // namespace btrieve::test
