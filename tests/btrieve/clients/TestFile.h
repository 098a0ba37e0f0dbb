// One file of any make-up in a folder of its own, opened on block 0 of this process.
#pragma once

#include "kit/Calls.h"

namespace btrieve::test {

class TestFile {
 public:
  TestFile() = default;
  explicit TestFile(const Bytes& createBlock) { Make(createBlock); }

  // Creates and opens; a failure is a failed test.
  void Make(const Bytes& createBlock);

  std::string Path(const std::string& name = "test.dat") const { return folder_.Path(name); }
  CallOut Call(int operation, const CallIn& in, int block = 0) {
    return process_.Call(operation, block, in);
  }
  Status Create(const Bytes& block, int keyNumber = 0);
  Status Open(int mode = 0, int block = 0);
  Status Close(int block = 0) { return Call(kClose, {}, block).status; }
  Status Insert(const Bytes& record, int keyNumber = -1) {
    return Call(kInsert, {.data = record, .keyNumber = keyNumber}).status;
  }
  // The records along a key as hex, separated by blanks, then the status that ended it unless 9.
  std::string Walk(int key, size_t room = 4096);
  // Records and unique values by Stat: "3 2,3".
  std::string Counts();
  ThisProcess& Process() { return process_; }

 private:
  Folder folder_;
  ThisProcess process_;
};

}  // namespace btrieve::test
