#include <gtest/gtest.h>

#include "FakeBtrieve.h"
#include "core/Gateway.h"
#include "core/GrowingArray.h"
#include "core/Table.h"
#include "core/Transactions.h"
#include "platform/CodePage.h"

namespace qrn::test {
namespace {

TEST(Gateway, LocksAddHundreds) {
  struct {
    uint16_t operation;
    int32_t kind;
    uint16_t sum;
  } const cases[] = {{6, 0, 6},   {6, 1, 106}, {22, 2, 222}, {5, 3, 305},
                     {6, 4, 406}, {6, 5, 6},   {6, -1, 6}};
  for (const auto& row : cases) EXPECT_EQ(DbAddLock(row.operation, row.kind), row.sum);
}

TEST(Gateway, StatusesReadAsText) {
  struct {
    int32_t status;
    const char* text;
  } const cases[] = {
      {3, "ファイルがオ－プンされてません。(rc=3)"},
      {4, "該当レコ－ドがみつかりません。"},
      {5, "キ－の値が重複しています。"},
      {8, "現在レコ－ドがありません。"},
      {9, "ファイルの先頭または最後です。"},
      {18, "ディスクが満杯。"},
      {17, "Btrieve エラ－(rc=17)"},
      {0, "Btrieve エラ－(rc=0)"},
      {-1, "Btrieve エラ－(rc=-1)"},
  };
  for (const auto& row : cases) EXPECT_EQ(CodePageToUtf8(DbStatusText(row.status)), row.text);
}

TEST(Gateway, VersionFillsFiveBytes) {
  FakeBtrieve btrieve;
  btrieve.Answer(26, [](const BtrieveCall& call) {
    for (int i = 0; i < 5; ++i) call.data[i] = static_cast<uint8_t>(i + 1);
    return int16_t{0};
  });
  uint8_t version[6] = {};
  EXPECT_EQ(DbGetVersion(TheEngine(), version), 0);
  EXPECT_EQ(Hex(version, 6), "010203040500");
  EXPECT_EQ(btrieve.TakeLog(), "26 noblock len=5 key=- kn=0; ");
}

TEST(Transactions, TakeTheBiasesTheyKnow) {
  FakeBtrieve btrieve;
  struct {
    int32_t bias;
    int exclusive, concurrent;
    const char* log;
  } const cases[] = {
      {0, 0, 0, "19 noblock nodata len=- key=- kn=0; 1019 noblock nodata len=- key=- kn=0; "},
      {400, 0, 0, "419 noblock nodata len=- key=- kn=0; 1419 noblock nodata len=- key=- kn=0; "},
      {500, -10, 0, "1519 noblock nodata len=- key=- kn=0; "},
      {600, -10, -10, ""},
      {50, -10, -10, ""},
      {-100, -10, -10, ""},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(DbBeginTransaction(row.bias), row.exclusive) << row.bias;
    EXPECT_EQ(DbBeginConCurTransaction(row.bias), row.concurrent) << row.bias;
    EXPECT_EQ(btrieve.TakeLog(), row.log) << row.bias;
  }
  btrieve.Answer(20, 39);
  EXPECT_EQ(DbEndTransaction(), 39);
  EXPECT_EQ(DbAbortTransaction(), 0);
  EXPECT_EQ(btrieve.TakeLog(),
            "20 noblock nodata len=- key=- kn=0; 21 noblock nodata len=- key=- kn=0; ");
}

TEST(Transactions, OnlyKnownBiasesAreStored) {
  QuorinSettings settings;
  DbEngine engine(settings);
  for (const int32_t bias : {0, 100, 200, 300, 400}) {
    EXPECT_EQ(DbSetLockBias(engine, bias), 0);
    EXPECT_EQ(engine.LockBias, bias);
  }
  for (const int32_t bias : {500, 1, -100}) {
    EXPECT_EQ(DbSetLockBias(engine, bias), -10);
    EXPECT_EQ(engine.LockBias, 400);
  }
}

TEST(Login, IsUndoneOnceAndWithItsOwnText) {
  FakeBtrieve btrieve;
  DbLogin login;
  EXPECT_EQ(DbLogOut(login), 0);
  EXPECT_EQ(btrieve.TakeLog(), "");
  btrieve.Answer(78, 170);
  EXPECT_EQ(DbLogIn(login, "btrv://a"), 170) << "counts as made all the same";
  EXPECT_EQ(DbLogOut(login), 170);
  EXPECT_EQ(DbLogOut(login), 0);
  EXPECT_EQ(btrieve.TakeLog(),
            "78 noblock nodata len=0 key=8:627472763A2F2F61 kn=0; "
            "78 noblock nodata len=0 key=8:627472763A2F2F61 kn=1; ");
  EXPECT_EQ(DbLogIn(login, std::string(600, 'x').c_str()), 170);
  EXPECT_EQ(std::string(login.Text), std::string(511, 'x'));
}

TEST(GrowingArray, GrowsToWhereItIsSet) {
  ShortArray array;
  EXPECT_EQ(array.Get(3), 0);
  EXPECT_TRUE(array.Set(3, 7));
  EXPECT_EQ(array.Size(), 4u);
  EXPECT_EQ(array.Get(0) + array.Get(1) + array.Get(2), 0);
  EXPECT_EQ(array.Get(3), 7);
  EXPECT_TRUE(array.Set(1, -5));
  EXPECT_EQ(array.Size(), 4u);
  EXPECT_FALSE(array.Set(SIZE_MAX / 2, 1));
  EXPECT_EQ(array.Get(1), -5);
}

TEST(GrowingArray, ClosesUpBehindAnElementTakenOut) {
  LongArray array;
  for (size_t index = 0; index < 3; ++index) ASSERT_TRUE(array.Set(index, 10));
  ASSERT_TRUE(array.Set(1, 20));
  array.Remove(0);
  EXPECT_EQ(array.Size(), 2u);
  EXPECT_EQ(array.Get(0), 20);
  array.Remove(2);
  array.Remove(SIZE_MAX);
  EXPECT_EQ(array.Size(), 2u);
}

}  // namespace
}  // namespace qrn::test
