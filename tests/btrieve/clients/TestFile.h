// One file of any make-up in a folder of its own, opened on block 0 of this process.
#pragma once

#include <gtest/gtest.h>

#include "kit/Calls.h"

namespace btrieve::test {

class TestFile {
 public:
  TestFile() = default;
  explicit TestFile(const Bytes& createBlock) { Make(createBlock); }

  // Creates and opens; a failure is a failed test.
  void Make(const Bytes& createBlock) {
    ASSERT_EQ(Create(createBlock), 0);
    ASSERT_EQ(Open(), 0);
  }

  std::string Path(const std::string& name = "test.dat") const { return folder_.Path(name); }
  const std::filesystem::path& Root() const { return folder_.Root(); }
  CallOut Call(int operation, const CallIn& in, int block = 0) {
    return process_.Call(operation, block, in);
  }
  Status Create(const Bytes& block, int keyNumber = 0) {
    return Call(kCreate, {.data = block, .key = PathKey(Path()), .keyNumber = keyNumber}, 31)
        .status;
  }
  Status Open(int mode = 0, int block = 0) {
    return Call(kOpen, {.key = PathKey(Path()), .keyNumber = mode}, block).status;
  }
  Status Close(int block = 0) { return Call(kClose, {}, block).status; }
  Status Insert(const Bytes& record, int keyNumber = -1) {
    return Call(kInsert, {.data = record, .keyNumber = keyNumber}).status;
  }
  // The records along a key as hex, separated by blanks, then the status that ended it unless 9.
  std::string Walk(int key, size_t room = 4096) {
    std::string text;
    CallOut out = Call(kGetFirst, {.room = room, .keyNumber = key});
    for (; out.status == 0; out = Call(kGetNext, {.room = room, .keyNumber = key})) {
      text += (text.empty() ? "" : " ") + ToHex(out.Returned());
    }
    return out.status == kEndOfFile ? text : text + " #" + std::to_string(out.status);
  }
  // Records and unique values by Stat: "3 2,3".
  std::string Counts() {
    const CallOut stat = Call(kStat, {.room = 4096, .keyNumber = -1});
    if (stat.status != 0) return "#" + std::to_string(stat.status);
    std::string text = std::to_string(NumberAt<uint32_t>(stat.data, 6)) + " ";
    const uint8_t keys = stat.data[4];
    size_t at = 16;
    for (int key = 0; key < keys; ++key, at += 16) {
      text += (key ? "," : "") + std::to_string(NumberAt<uint32_t>(stat.data, at + 6));
      while (NumberAt<uint16_t>(stat.data, at + 4) & 0x10) at += 16;
    }
    return text;
  }
  ThisProcess& Process() { return process_; }

 private:
  Folder folder_;
  ThisProcess process_;
};

}  // namespace btrieve::test
