// What a second process does to a form's records: locks, changes, deletions.
#include <gtest/gtest.h>

#include "Office.h"
#include "clients/Remote.h"
#include "core/Gateway.h"

namespace qrn::test {
namespace {

using btrieve::test::CallIn;
using btrieve::test::OtherProcess;
using btrieve::test::PathKey;

constexpr int kNoWait = 200;

class TwoForms : public ::testing::Test {
 protected:
  void SetUp() override {
    for (const char* code : {"1", "2"}) {
      form_.texts = {{"Code", code}, {"Name", "x"}};
      ASSERT_EQ(DbButtonInsert(office_.engine, button_, false), 0);
    }
    const CallIn open{.key = PathKey(office_.PathOf("people.btr"))};
    ASSERT_EQ(other_.Call(BtrOpOpen, 0, open).status, 0);
  }

  // The other process at the record of that code.
  Status OtherReads(uint8_t code, int lock = 0) {
    CallIn in;
    in.room = 41;
    in.key = {code, 0, 0, 0};
    const auto out = other_.Call(BtrOpGetEqual + lock, 0, in);
    record_ = out.data;
    return out.status;
  }
  Status OtherUpdates(char first) {
    record_[4] = static_cast<uint8_t>(first);
    return other_.Call(BtrOpUpdate, 0, {.data = record_, .key = {0}}).status;
  }

  Status Read(const char* code) {
    form_.texts = {{"Code", code}, {"Name", "screen"}};
    return DbButtonRead(office_.engine, BtrOpGetEqual, button_);
  }

  Office office_;
  PlayedForm form_;
  PlayedButton button_{office_, form_, "People"};
  OtherProcess other_;
  btrieve::test::Bytes record_;
};

TEST_F(TwoForms, ALockElsewhereRefusesLocksAndWritesButNoPlainRead) {
  ASSERT_EQ(OtherReads(1, kNoWait), 0);
  button_.locks = kLockSingleNoWait;
  EXPECT_EQ(Read("1"), 84);
  EXPECT_EQ(form_.texts["Name"], "screen") << "nothing is shown";
  EXPECT_EQ(Read("2"), 0);
  button_.locks = kLockNone;
  EXPECT_EQ(Read("1"), 0);
  EXPECT_EQ(form_.texts["Name"], "x");
  button_.locks = kLockSingleNoWait;
  form_.texts["Name"] = "mine";
  EXPECT_EQ(DbButtonUpdate(office_.engine, button_, false), 84);
  EXPECT_EQ(DbButtonDelete(office_.engine, button_), 84);
  other_.Kill();
  EXPECT_EQ(DbButtonUpdate(office_.engine, button_, false), 0);
}

TEST_F(TwoForms, WhatOneChangesTheOtherSeesAfterReadingAgain) {
  EXPECT_EQ(Read("1"), 0);
  ASSERT_EQ(OtherReads(1), 0);
  ASSERT_EQ(OtherUpdates('y'), 0);
  EXPECT_EQ(form_.texts["Name"], "x");
  form_.texts["Name"] = "mine";
  EXPECT_EQ(DbButtonUpdate(office_.engine, button_, false), 80) << "changed since it was read";
  EXPECT_EQ(Read("1"), 0);
  EXPECT_EQ(form_.texts["Name"], "y");
  form_.texts["Name"] = "mine";
  EXPECT_EQ(DbButtonUpdate(office_.engine, button_, false), 0);
}

TEST_F(TwoForms, AFormsLockKeepsTheOtherFromWriting) {
  button_.locks = kLockMultiNoWait;
  EXPECT_EQ(Read("2"), 0);
  ASSERT_EQ(OtherReads(2), 0);
  CallIn update{.data = record_, .key = {0}};
  EXPECT_EQ(other_.Call(BtrOpUpdate + kNoWait, 0, update).status, 84);
  EXPECT_EQ(other_.Call(BtrOpDelete + kNoWait, 0, {}).status, 84);
}

}  // namespace
}  // namespace qrn::test
