// The flat interface from its first call to its last, against real files.

#include "FlatApi.h"
#include "tests/support/Company.h"
#include "tests/support/Test.h"

namespace qrn::test {
namespace {

// UTF-8 in, as the engine takes it: the native code page is 932; on Windows the process's is.
std::string Bytes(const char* utf8) { return Utf8ToCodePage(utf8); }

struct Flat : ::testing::Test {
  void Start(const TextSettings& settings = {}) {
    api_ = &FreshFlatApi(settings);
    ASSERT_EQ(api_->DbInitialize(company_.Directory().c_str()), 0);
  }

  void StartWith(int16_t table) {
    Start();
    ASSERT_EQ(api_->DbOpen(table), 0);
  }

  void TearDown() override {
    if (api_ == nullptr) return;
    EXPECT_EQ(api_->DbTerminate(), 0);
  }

  std::string Field(int16_t table, int16_t field) {
    return TakeUnits(api_->DbGetFieldData(table, field));
  }

  // One person's fields in their order, as text.
  std::string Person() {
    std::string text;
    for (int16_t i = 0; i < 5; ++i) text += (i != 0 ? "|" : "") + Field(kPeople, i);
    return text;
  }

  int32_t Insert(const char* code, const char* name, const char* town) {
    api_->DbClearFieldBuffer(kPeople);
    api_->DbSetFieldData(kPeople, 0, code);
    api_->DbSetFieldData(kPeople, 1, Bytes(name).c_str());
    api_->DbSetFieldData(kPeople, 2, Bytes(town).c_str());
    api_->DbSetFieldData(kPeople, 3, "2024/01/31");
    api_->DbSetFieldData(kPeople, 4, "12.50");
    return api_->DbAccess(BtrOpInsert, kPeople, kByCode);
  }

  void InsertFour() {
    EXPECT_EQ(Insert("1003", "安部", "大阪"), 0);
    EXPECT_EQ(Insert("1001", "伊藤", "東京"), 0);
    EXPECT_EQ(Insert("1004", "Abe", "大阪"), 0);
    EXPECT_EQ(Insert("1002", "安部", "東京"), 0);
  }

  // "1001 1002 ... status=9" along a key from its first record.
  std::string Walk(int16_t index, int16_t from = BtrOpGetFirst, int16_t on = BtrOpGetNext) {
    std::string text;
    int32_t status = api_->DbAccess(from, kPeople, index);
    for (; status == 0; status = api_->DbAccess(on, kPeople, index))
      text += Field(kPeople, 0) + " ";
    return text + "status=" + std::to_string(status);
  }

  Company company_;
  const FlatApi* api_ = nullptr;
};

TEST_F(Flat, BeforeADictionaryThereIsNothingToWorkOn) {
  const FlatApi& api = FreshFlatApi({});
  EXPECT_EQ(api.DbTerminate(), 0);
  EXPECT_EQ(api.DbGetNumOfTable(), -12);
  EXPECT_EQ(api.DbGetNumOfField(0), -12);
  EXPECT_EQ(api.DbGetDataSize(0, 0), -12);
  EXPECT_EQ(api.DbOpen(0), -12);
  EXPECT_EQ(api.DbClose(-1), -12);
  EXPECT_EQ(api.DbCreate(0), -12);
  EXPECT_EQ(api.DbAccess(BtrOpGetFirst, 0, 0), -12);
  EXPECT_EQ(api.DbGetPosition(0), -12);
  EXPECT_EQ(api.DbSetFieldData(0, 0, "x"), -12);
  EXPECT_EQ(api.DbGetFieldName(0, 0), nullptr);
  void* const nothing = api.DbGetFieldData(0, 0);
  EXPECT_EQ(api.DbGetTableName(0), nothing);
  EXPECT_EQ(*static_cast<char*>(nothing), '\0');
  EXPECT_EQ(api.DbEndTransaction(), 39);
  EXPECT_EQ(api.DbBeginTransaction(500), -10);
  EXPECT_EQ(api.DbSetOpenMode(0, 0) + api.DbSetOwnerName(0, nullptr, 0), 0);
}

TEST_F(Flat, InitializingTellsWhyItFails) {
  Start();
  EXPECT_EQ(api_->DbInitialize(""), 65515) << "-21 without its sign";
  EXPECT_EQ(api_->DbInitialize(nullptr), 65515);
  EXPECT_EQ(api_->DbGetNumOfTable(), kTableCount) << "the dictionary is still in place";
  const int32_t code = api_->DbInitialize((company_.Directory() + "/none").c_str());
  EXPECT_GT(code, 0);
  EXPECT_LT(code, 200);
  EXPECT_EQ(api_->DbGetNumOfTable(), -12);
  EXPECT_EQ(api_->DbInitialize(company_.Directory().c_str()), 0);
  EXPECT_EQ(api_->DbInitialize(company_.Directory().c_str()), 0);
}

TEST_F(Flat, TheDictionaryIsToldWithoutOpening) {
  Start();
  EXPECT_EQ(api_->DbGetNumOfTable(), kTableCount);
  EXPECT_EQ(TakeBytes(api_->DbGetTableName(kNotes)), "Notes");
  EXPECT_EQ(TakeBytes(api_->DbGetTableName(kTableCount)), "") << "one past the last is empty";
  EXPECT_EQ(api_->DbGetTableName(kTableCount + 1), nullptr);
  EXPECT_EQ(api_->DbGetTableName(-1), nullptr);
  EXPECT_EQ(api_->DbGetNumOfField(kPeople), 5);
  EXPECT_EQ(api_->DbGetNumOfField(kTableCount), 0);
  EXPECT_EQ(api_->DbGetNumOfField(kTableCount + 1), -15);
  EXPECT_EQ(api_->DbGetNumOfField(-1), -15);
  EXPECT_EQ(api_->DbGetDataSize(kPeople, 1), -3) << "sizes need an open table";
  EXPECT_EQ(api_->DbGetFieldName(kTableCount + 1, 0), nullptr);
  EXPECT_EQ(*static_cast<char*>(api_->DbGetFieldName(kPeople, 0)), '\0');
  EXPECT_EQ(api_->DbGetFieldData(-1, 0), nullptr);
}

TEST_F(Flat, TablesOpenAndCloseOnce) {
  StartWith(kPeople);
  EXPECT_EQ(api_->DbOpen(kPeople), -2);
  EXPECT_EQ(api_->DbCreate(kPeople), -2);
  EXPECT_EQ(api_->DbGetDataSize(kPeople, 1), 20);
  EXPECT_EQ(api_->DbGetDataType(kPeople, 4), 5);
  EXPECT_EQ(api_->DbGetDataSize(kPeople, 5), -13);
  EXPECT_EQ(api_->DbGetDataType(kPeople, -1), -13);
  EXPECT_EQ(TakeBytes(api_->DbGetFieldName(kPeople, 3)), "Born");
  EXPECT_EQ(TakeBytes(api_->DbGetFieldName(kPeople, 5)), "");
  EXPECT_EQ(TakeBytes(api_->DbGetFieldName(kPeople, -32768)), "");
  EXPECT_EQ(Field(kPeople, 30000), "");
  EXPECT_EQ(api_->DbSetFieldData(kPeople, 5, "x"), -5);
  EXPECT_EQ(api_->DbSetFieldData(kPeople, -1, "x"), -5);
  EXPECT_EQ(api_->DbClose(kPeople), 0);
  EXPECT_EQ(api_->DbClose(kPeople), -3);
}

TEST_F(Flat, RecordsComeBackInTheOrderOfEachKey) {
  StartWith(kPeople);
  InsertFour();
  EXPECT_EQ(Insert("1004", "x", "y"), 5);
  int32_t count = 0;
  EXPECT_EQ(api_->DbGetNumOfRecords(kPeople, &count), 0);
  EXPECT_EQ(count, 4);
  EXPECT_EQ(Walk(kByCode), "1001 1002 1003 1004 status=9");
  EXPECT_EQ(Walk(kByCode, BtrOpGetLast, BtrOpGetPrevious), "1004 1003 1002 1001 status=9");
  EXPECT_EQ(Walk(kByPlace), "1003 1004 1001 1002 status=9");
  EXPECT_EQ(Walk(kByName), "1004 1003 1002 1001 status=9");
  EXPECT_EQ(Walk(-1), "status=6") << "no key to go along";
}

TEST_F(Flat, PositionsAndPercentagesFindTheirRecord) {
  StartWith(kPeople);
  EXPECT_EQ(api_->DbGetPosition(kPeople), -1) << "no record is current";
  InsertFour();
  EXPECT_EQ(api_->DbAccess(BtrOpGetLast, kPeople, kByCode), 0);
  const int32_t position = api_->DbGetPosition(kPeople);
  EXPECT_GT(position, 0);
  EXPECT_EQ(api_->DbAccess(BtrOpGetFirst, kPeople, kByCode), 0);
  EXPECT_EQ(api_->DbGetDirect(kPeople, position, kByCode), 0);
  EXPECT_EQ(Field(kPeople, 0), "1004");
  EXPECT_EQ(api_->DbAccess(BtrOpGetPrevious, kPeople, kByCode), 0);
  EXPECT_EQ(Field(kPeople, 0), "1003");
  EXPECT_EQ(api_->DbGetDirect(kPeople, position, -1), 0);
  EXPECT_EQ(Field(kPeople, 0), "1004");
  EXPECT_EQ(api_->DbGetDirect(kPeople, 0x7000000, kByCode), 43);

  EXPECT_EQ(api_->DbGetByPercentage(kPeople, kByCode, 0), 0);
  EXPECT_EQ(Field(kPeople, 0), "1001");
  uint16_t first = 1, last = 0;
  EXPECT_EQ(api_->DbFindPercentage(kPeople, kByCode, 0, &first), 0);
  EXPECT_EQ(first, 0);
  EXPECT_EQ(api_->DbGetByPercentage(kPeople, kByCode, 10000), 0);
  EXPECT_EQ(Field(kPeople, 0), "1004");
  EXPECT_EQ(api_->DbFindPercentage(kPeople, kByCode, 0, &last), 0);
  EXPECT_GT(last, 5000);
  EXPECT_EQ(api_->DbFindPercentage(kPeople, -1, position, &last), 0);
  EXPECT_EQ(api_->DbFindPercentage(kPeople, kByCode, 0, nullptr), 0);
}

TEST_F(Flat, TransactionsEndOrAreTakenBack) {
  StartWith(kPeople);
  InsertFour();
  EXPECT_EQ(api_->DbBeginTransaction(0), 0);
  EXPECT_EQ(api_->DbBeginConCurTransaction(0), 37) << "one at a time";
  EXPECT_EQ(Insert("1005", "x", "y"), 0);
  EXPECT_EQ(api_->DbAbortTransaction(), 0);
  EXPECT_EQ(Walk(kByCode), "1001 1002 1003 1004 status=9");
  EXPECT_EQ(api_->DbBeginConCurTransaction(500), 0);
  EXPECT_EQ(Insert("1005", "x", "y"), 0);
  EXPECT_EQ(api_->DbEndTransaction(), 0);
  EXPECT_EQ(Walk(kByCode), "1001 1002 1003 1004 1005 status=9");
  EXPECT_EQ(api_->DbAbortTransaction(), 39);
}

TEST_F(Flat, RecordsOfVariableLengthKeepTheirTexts) {
  StartWith(kNotes);
  const std::string texts[] = {Bytes("短い"), "", std::string(3999, 'x')};
  for (const std::string& text : texts) {
    api_->DbClearFieldBuffer(kNotes);
    EXPECT_EQ(api_->DbSetFieldData(kNotes, 1, text.c_str()), 0);
    EXPECT_EQ(api_->DbAccess(BtrOpInsert, kNotes, 0), 0);
  }
  int32_t status = api_->DbAccess(BtrOpGetFirst, kNotes, 0);
  for (size_t i = 0; i < std::size(texts); ++i, status = api_->DbAccess(BtrOpGetNext, kNotes, 0)) {
    EXPECT_EQ(status, 0) << i;
    EXPECT_EQ(Field(kNotes, 0), std::to_string(i + 1));
    EXPECT_EQ(Field(kNotes, 1), CodePageToUtf8(texts[i]));
  }
  EXPECT_EQ(status, 9);
}

TEST_F(Flat, TheVersionIsThatOfTheRecordManager) {
  Start();
  uint8_t version[6] = {0, 0, 0, 0, 0, 0xEE};
  EXPECT_EQ(api_->DbGetVersion(version), 0);
  EXPECT_NE(version[0] | version[1], 0);
  EXPECT_EQ(version[5], 0xEE) << "five bytes and no more";
}

TEST_F(Flat, TextsLeaveAsTheSettingsSay) {
  const std::string name = Bytes("表示");
  Start({.fixedArea = 0, .unicode = 0});
  ASSERT_EQ(api_->DbOpen(kPeople), 0);
  api_->DbSetFieldData(kPeople, 1, name.c_str());
  EXPECT_EQ(TakeBytes(api_->DbGetFieldData(kPeople, 1)), name) << "bytes in a wide string's room";

  Start({.fixedArea = 1, .unicode = 1});
  ASSERT_EQ(api_->DbOpen(kPeople), 0);
  api_->DbSetFieldData(kPeople, 1, name.c_str());
  const auto* area = static_cast<const char*>(api_->DbGetFieldData(kPeople, 1));
  EXPECT_EQ(area, name);
  int32_t length = 0;
  std::memcpy(&length, area - sizeof length, sizeof length);
  EXPECT_EQ(length, static_cast<int32_t>(name.size()));
  EXPECT_EQ(api_->DbGetTableName(kNotes), area) << "one area for all";
  EXPECT_STREQ(area, "Notes");
  EXPECT_EQ(api_->DbGetFieldName(kDays, 0), area);
  EXPECT_STREQ(area, "") << "a closed table has no field names";
}

}  // namespace
}  // namespace qrn::test
