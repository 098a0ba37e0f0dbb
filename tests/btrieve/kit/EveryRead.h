// Every read there is on an open file of fixed-length records: by place and along each key, both
// ways, singly and extended, by value, position and percentage.
#pragma once

#include <functional>
#include <set>

#include "Calls.h"

namespace btrieve::test {

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
  std::string Run(Client& client, int block);

 private:
  CallOut Call(int operation, CallIn in);
  void Walk(int first, int next, int key);
  void WalkExtended(int first, int next, int key);
  void ReadByPosition();
  void ReadByPercentage(int key);
  void ReadByValue(int key);
  void Note(const std::string& fault);
  void Look(const CallOut& out);
  void LookAtReply(const Bytes& reply);

  FileShape shape_;
  Client* client_ = nullptr;
  int block_ = 0;
  std::string fault_;
  std::vector<Bytes> keyValues_;
  std::vector<uint32_t> positions_;
};

}  // namespace btrieve::test
