// A second process at the office's people: it reads, locks, changes and deletes them.
#pragma once

#include "clients/Remote.h"
#include "tests/bound/Office.h"

namespace qrn::test {

class OtherStation {
 public:
  // Bytes of a person's record.
  static constexpr size_t kName = 4, kTown = 24;
  static constexpr int kNoWait = 200;  // lock bias

  explicit OtherStation(const Office& office) {
    const btrieve::test::CallIn open{.key = btrieve::test::PathKey(office.PathOf("people.btr"))};
    EXPECT_EQ(process_.Call(BtrOpOpen, 0, open).status, 0);
  }

  // The record of that code becomes its current one.
  Status Reads(uint8_t code, int lock = 0) {
    btrieve::test::CallIn in;
    in.room = 41;
    in.key = {code, 0, 0, 0};
    const auto out = process_.Call(BtrOpGetEqual + lock, 0, in);
    record_ = out.data;
    return out.status;
  }
  // Writes the current record, with another character there.
  Status Updates(size_t at, char character, int lock = 0) {
    record_[at] = static_cast<uint8_t>(character);
    return process_.Call(BtrOpUpdate + lock, 0, {.data = record_, .key = {0}}).status;
  }
  Status Deletes(int lock = 0) { return process_.Call(BtrOpDelete + lock, 0, {}).status; }
  void Dies() { process_.Kill(); }

 private:
  btrieve::test::OtherProcess process_;
  btrieve::test::Bytes record_;
};

}  // namespace qrn::test
