// The flat interface from its first call to its last, against real files.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "Company.h"
#include "FlatApi.h"
#include "platform/CodePage.h"

namespace qrn::test {
namespace {

enum Operation : int16_t {
  kInsert = 2,
  kUpdate = 3,
  kDelete = 4,
  kGetEqual = 5,
  kGetNext = 6,
  kGetPrevious = 7,
  kGetGreater = 8,
  kGetFirst = 12,
  kGetLast = 13,
  kStepFirst = 33,
};

// UTF-8 in, as the engine takes it: the native code page is 932; on Windows the process's is.
std::string Bytes(const char* utf8) { return Utf8ToCodePage(utf8); }

class Flat : public ::testing::Test {
 protected:
  void Start(const TextSettings& settings = {}) {
    api_ = &FreshFlatApi(settings);
    ASSERT_EQ(api_->Initialize(company_.Directory().c_str()), 0);
  }

  void StartWith(int16_t table) {
    Start();
    ASSERT_EQ(api_->Open(table), 0);
  }

  void TearDown() override {
    if (api_ == nullptr) return;
    EXPECT_EQ(api_->Terminate(), 0);
  }

  std::string Field(int16_t table, int16_t field) {
    return TakeUnits(api_->GetFieldData(table, field));
  }

  // One person's fields in their order, as text.
  std::string Person() {
    std::string text;
    for (int16_t i = 0; i < 5; ++i) text += (i != 0 ? "|" : "") + Field(kPeople, i);
    return text;
  }

  int32_t Insert(const char* code, const char* name, const char* town) {
    api_->ClearFieldBuffer(kPeople);
    api_->SetFieldData(kPeople, 0, code);
    api_->SetFieldData(kPeople, 1, Bytes(name).c_str());
    api_->SetFieldData(kPeople, 2, Bytes(town).c_str());
    api_->SetFieldData(kPeople, 3, "2024/01/31");
    api_->SetFieldData(kPeople, 4, "12.50");
    return api_->Access(kInsert, kPeople, kByCode);
  }

  void InsertFour() {
    EXPECT_EQ(Insert("1003", "安部", "大阪"), 0);
    EXPECT_EQ(Insert("1001", "伊藤", "東京"), 0);
    EXPECT_EQ(Insert("1004", "Abe", "大阪"), 0);
    EXPECT_EQ(Insert("1002", "安部", "東京"), 0);
  }

  // "1001 1002 ... status=9" along a key from its first record.
  std::string Walk(int16_t index, int16_t from = kGetFirst, int16_t on = kGetNext) {
    std::string text;
    int32_t status = api_->Access(from, kPeople, index);
    for (; status == 0; status = api_->Access(on, kPeople, index)) text += Field(kPeople, 0) + " ";
    return text + "status=" + std::to_string(status);
  }

  Company company_;
  const FlatApi* api_ = nullptr;
};

TEST_F(Flat, BeforeADictionaryThereIsNothingToWorkOn) {
  const FlatApi& api = FreshFlatApi({});
  EXPECT_EQ(api.Terminate(), 0);
  EXPECT_EQ(api.GetNumOfTable(), -12);
  EXPECT_EQ(api.GetNumOfField(0), -12);
  EXPECT_EQ(api.GetDataSize(0, 0), -12);
  EXPECT_EQ(api.Open(0), -12);
  EXPECT_EQ(api.Close(-1), -12);
  EXPECT_EQ(api.Create(0), -12);
  EXPECT_EQ(api.Access(kGetFirst, 0, 0), -12);
  EXPECT_EQ(api.GetPosition(0), -12);
  EXPECT_EQ(api.SetFieldData(0, 0, "x"), -12);
  EXPECT_EQ(api.GetFieldName(0, 0), nullptr);
  void* const nothing = api.GetFieldData(0, 0);
  EXPECT_EQ(api.GetTableName(0), nothing);
  EXPECT_EQ(*static_cast<char*>(nothing), '\0');
  EXPECT_EQ(api.EndTransaction(), 39);
  EXPECT_EQ(api.BeginTransaction(500), -10);
  EXPECT_EQ(api.SetOpenMode(0, 0) + api.SetOwnerName(0, nullptr, 0), 0);
}

TEST_F(Flat, InitializingTellsWhyItFails) {
  Start();
  EXPECT_EQ(api_->Initialize(""), 65515) << "-21 without its sign";
  EXPECT_EQ(api_->Initialize(nullptr), 65515);
  EXPECT_EQ(api_->GetNumOfTable(), kTableCount) << "the dictionary is still in place";
  const int32_t code = api_->Initialize((company_.Directory() + "/none").c_str());
  EXPECT_GT(code, 0);
  EXPECT_LT(code, 200);
  EXPECT_EQ(api_->GetNumOfTable(), -12);
  EXPECT_EQ(api_->Initialize(company_.Directory().c_str()), 0);
  EXPECT_EQ(api_->Initialize(company_.Directory().c_str()), 0);
}

TEST_F(Flat, TheDictionaryIsToldWithoutOpening) {
  Start();
  EXPECT_EQ(api_->GetNumOfTable(), kTableCount);
  EXPECT_EQ(TakeBytes(api_->GetTableName(kNotes)), "Notes");
  EXPECT_EQ(TakeBytes(api_->GetTableName(kTableCount)), "") << "one past the last is empty";
  EXPECT_EQ(api_->GetTableName(kTableCount + 1), nullptr);
  EXPECT_EQ(api_->GetTableName(-1), nullptr);
  EXPECT_EQ(api_->GetNumOfField(kPeople), 5);
  EXPECT_EQ(api_->GetNumOfField(kTableCount), 0);
  EXPECT_EQ(api_->GetNumOfField(kTableCount + 1), -15);
  EXPECT_EQ(api_->GetNumOfField(-1), -15);
  EXPECT_EQ(api_->GetDataSize(kPeople, 1), -3) << "sizes need an open table";
  EXPECT_EQ(api_->GetFieldName(kTableCount + 1, 0), nullptr);
  EXPECT_EQ(*static_cast<char*>(api_->GetFieldName(kPeople, 0)), '\0');
  EXPECT_EQ(api_->GetFieldData(-1, 0), nullptr);
}

TEST_F(Flat, ClosedTablesAreRefused) {
  Start();
  uint16_t percentage = 7;
  int32_t count = 7;
  for (const int16_t id : {int16_t{kPeople}, int16_t{kTableCount}}) {
    EXPECT_EQ(api_->Close(id), -3);
    EXPECT_EQ(api_->Access(kGetFirst, id, 0), -3);
    EXPECT_EQ(api_->SetFieldData(id, 0, "x"), -3);
    EXPECT_EQ(api_->ClearFieldBuffer(id), -3);
    EXPECT_EQ(api_->GetPosition(id), -3);
    EXPECT_EQ(api_->GetDirect(id, 1, 0), -3);
    EXPECT_EQ(api_->GetByPercentage(id, 0, 1), -3);
    EXPECT_EQ(api_->FindPercentage(id, 0, 1, &percentage), -3);
    EXPECT_EQ(api_->Unlock(id, 0), -3);
    EXPECT_EQ(api_->GetNumOfRecords(id, &count), -3);
    EXPECT_EQ(api_->GetDataType(id, 0), -3);
  }
  EXPECT_EQ(api_->Access(kGetFirst, kTableCount + 1, 0), -15);
  EXPECT_EQ(api_->GetPosition(-1), -15);
  EXPECT_EQ(percentage + count, 14);
}

TEST_F(Flat, TablesOpenAndCloseOnce) {
  StartWith(kPeople);
  EXPECT_EQ(api_->Open(kPeople), -2);
  EXPECT_EQ(api_->Create(kPeople), -2);
  EXPECT_EQ(api_->GetDataSize(kPeople, 1), 20);
  EXPECT_EQ(api_->GetDataType(kPeople, 4), 5);
  EXPECT_EQ(api_->GetDataSize(kPeople, 5), -13);
  EXPECT_EQ(api_->GetDataType(kPeople, -1), -13);
  EXPECT_EQ(TakeBytes(api_->GetFieldName(kPeople, 3)), "Born");
  EXPECT_EQ(TakeBytes(api_->GetFieldName(kPeople, 5)), "");
  EXPECT_EQ(TakeBytes(api_->GetFieldName(kPeople, -32768)), "");
  EXPECT_EQ(Field(kPeople, 30000), "");
  EXPECT_EQ(api_->SetFieldData(kPeople, 5, "x"), -5);
  EXPECT_EQ(api_->SetFieldData(kPeople, -1, "x"), -5);
  EXPECT_EQ(api_->Close(kPeople), 0);
  EXPECT_EQ(api_->Close(kPeople), -3);
}

TEST_F(Flat, RecordsComeBackInTheOrderOfEachKey) {
  StartWith(kPeople);
  InsertFour();
  EXPECT_EQ(Insert("1004", "x", "y"), 5);
  int32_t count = 0;
  EXPECT_EQ(api_->GetNumOfRecords(kPeople, &count), 0);
  EXPECT_EQ(count, 4);
  EXPECT_EQ(Walk(kByCode), "1001 1002 1003 1004 status=9");
  EXPECT_EQ(Walk(kByCode, kGetLast, kGetPrevious), "1004 1003 1002 1001 status=9");
  EXPECT_EQ(Walk(kByPlace), "1003 1004 1001 1002 status=9");
  EXPECT_EQ(Walk(kByName), "1004 1003 1002 1001 status=9");
  EXPECT_EQ(Walk(-1), "status=6") << "no key to go along";
}

TEST_F(Flat, ReadsTakeTheirKeyFromTheBuffer) {
  StartWith(kPeople);
  InsertFour();
  api_->SetFieldData(kPeople, 0, "1002");
  EXPECT_EQ(api_->Access(kGetEqual, kPeople, kByCode), 0);
  EXPECT_EQ(Person(), "1002|安部|東京|2024/01/31|12.50");
  api_->SetFieldData(kPeople, 0, "1003");
  EXPECT_EQ(api_->Access(kGetEqual, kPeople, kByPlace), 4) << "another town";
  EXPECT_EQ(api_->Access(kGetGreater, kPeople, kByCode), 0);
  EXPECT_EQ(Field(kPeople, 0), "1004");
}

TEST_F(Flat, UpdatesAndDeletesWorkOnTheCurrentRecord) {
  StartWith(kPeople);
  InsertFour();
  EXPECT_EQ(api_->Access(kGetFirst, kPeople, kByCode), 0);
  api_->SetFieldData(kPeople, 1, Bytes("改名").c_str());
  api_->SetFieldData(kPeople, 4, "-0.75");
  EXPECT_EQ(api_->Access(kUpdate, kPeople, -1), 0);
  api_->ClearFieldBuffer(kPeople);
  EXPECT_EQ(api_->Access(kGetFirst, kPeople, kByCode), 0);
  EXPECT_EQ(Person(), "1001|改名|東京|2024/01/31|-0.75");
  api_->SetFieldData(kPeople, 0, "9");
  EXPECT_EQ(api_->Access(kUpdate, kPeople, kByCode), 10) << "the code is not modifiable";
  EXPECT_EQ(api_->Access(kDelete, kPeople, -1), 0);
  EXPECT_EQ(Walk(kByCode), "1002 1003 1004 status=9");
}

TEST_F(Flat, PositionsAndPercentagesFindTheirRecord) {
  StartWith(kPeople);
  EXPECT_EQ(api_->GetPosition(kPeople), -1) << "no record is current";
  InsertFour();
  EXPECT_EQ(api_->Access(kGetLast, kPeople, kByCode), 0);
  const int32_t position = api_->GetPosition(kPeople);
  EXPECT_GT(position, 0);
  EXPECT_EQ(api_->Access(kGetFirst, kPeople, kByCode), 0);
  EXPECT_EQ(api_->GetDirect(kPeople, position, kByCode), 0);
  EXPECT_EQ(Field(kPeople, 0), "1004");
  EXPECT_EQ(api_->Access(kGetPrevious, kPeople, kByCode), 0);
  EXPECT_EQ(Field(kPeople, 0), "1003");
  EXPECT_EQ(api_->GetDirect(kPeople, position, -1), 0);
  EXPECT_EQ(Field(kPeople, 0), "1004");
  EXPECT_EQ(api_->GetDirect(kPeople, 0x7000000, kByCode), 43);

  EXPECT_EQ(api_->GetByPercentage(kPeople, kByCode, 0), 0);
  EXPECT_EQ(Field(kPeople, 0), "1001");
  uint16_t first = 1, last = 0;
  EXPECT_EQ(api_->FindPercentage(kPeople, kByCode, 0, &first), 0);
  EXPECT_EQ(first, 0);
  EXPECT_EQ(api_->GetByPercentage(kPeople, kByCode, 10000), 0);
  EXPECT_EQ(Field(kPeople, 0), "1004");
  EXPECT_EQ(api_->FindPercentage(kPeople, kByCode, 0, &last), 0);
  EXPECT_GT(last, 5000);
  EXPECT_EQ(api_->FindPercentage(kPeople, -1, position, &last), 0);
  EXPECT_EQ(api_->FindPercentage(kPeople, kByCode, 0, nullptr), 0);
}

TEST_F(Flat, TransactionsEndOrAreTakenBack) {
  StartWith(kPeople);
  InsertFour();
  EXPECT_EQ(api_->BeginTransaction(0), 0);
  EXPECT_EQ(api_->BeginConCurTransaction(0), 37) << "one at a time";
  EXPECT_EQ(Insert("1005", "x", "y"), 0);
  EXPECT_EQ(api_->AbortTransaction(), 0);
  EXPECT_EQ(Walk(kByCode), "1001 1002 1003 1004 status=9");
  EXPECT_EQ(api_->BeginConCurTransaction(500), 0);
  EXPECT_EQ(Insert("1005", "x", "y"), 0);
  EXPECT_EQ(api_->EndTransaction(), 0);
  EXPECT_EQ(Walk(kByCode), "1001 1002 1003 1004 1005 status=9");
  EXPECT_EQ(api_->AbortTransaction(), 39);
}

TEST_F(Flat, LocksAreLetGoByTheirType) {
  StartWith(kPeople);
  InsertFour();
  constexpr int16_t kMultipleNoWait = 400;
  EXPECT_EQ(api_->Access(kGetFirst + kMultipleNoWait, kPeople, kByCode), 0);
  EXPECT_EQ(api_->Unlock(kPeople, -1), 0);
  EXPECT_EQ(api_->Unlock(kPeople, -1), 81) << "locked no more";
  EXPECT_EQ(api_->Access(kGetLast + kMultipleNoWait, kPeople, kByCode), 0);
  EXPECT_EQ(api_->Unlock(kPeople, -2), 0);
}

TEST_F(Flat, RecordsOfVariableLengthKeepTheirTexts) {
  StartWith(kNotes);
  const std::string texts[] = {Bytes("短い"), "", std::string(3999, 'x')};
  for (const std::string& text : texts) {
    api_->ClearFieldBuffer(kNotes);
    EXPECT_EQ(api_->SetFieldData(kNotes, 1, text.c_str()), 0);
    EXPECT_EQ(api_->Access(kInsert, kNotes, 0), 0);
  }
  int32_t status = api_->Access(kGetFirst, kNotes, 0);
  for (size_t i = 0; i < std::size(texts); ++i, status = api_->Access(kGetNext, kNotes, 0)) {
    EXPECT_EQ(status, 0) << i;
    EXPECT_EQ(Field(kNotes, 0), std::to_string(i + 1));
    EXPECT_EQ(Field(kNotes, 1), CodePageToUtf8(texts[i]));
  }
  EXPECT_EQ(status, 9);
}

TEST_F(Flat, NullableFieldsAreWrittenPastTheirIndicator) {
  StartWith(kDays);
  api_->ClearFieldBuffer(kDays);
  api_->SetFieldData(kDays, 0, "2024/02/29");
  api_->SetFieldData(kDays, 1, "12:34:56");
  api_->SetFieldData(kDays, 2, "word");
  EXPECT_EQ(api_->Access(kInsert, kDays, 0), 0);
  api_->ClearFieldBuffer(kDays);
  EXPECT_EQ(Field(kDays, 1), "00:00:00");
  EXPECT_EQ(api_->Access(kGetFirst, kDays, 0), 0);
  EXPECT_EQ(Field(kDays, 0), "2024/02/29");
  EXPECT_EQ(Field(kDays, 1), "12:34:56");
  EXPECT_EQ(Field(kDays, 2), "word");
}

TEST_F(Flat, ACreateEmptiesTheFile) {
  StartWith(kPeople);
  InsertFour();
  EXPECT_EQ(api_->Close(kPeople), 0);
  EXPECT_EQ(api_->Create(kPeople), 0);
  EXPECT_EQ(api_->Open(kPeople), 0);
  EXPECT_EQ(Walk(kByCode), "status=9");
  InsertFour();
  EXPECT_EQ(Walk(kByName), "1004 1003 1002 1001 status=9") << "keys come from the dictionary";
}

TEST_F(Flat, OpenModesReachTheRecordManager) {
  Start();
  constexpr int16_t kReadOnly = -2;
  EXPECT_EQ(api_->SetOwnerName(0, "ignored without one", kReadOnly), 0);
  EXPECT_EQ(api_->Open(kPeople), 0);
  EXPECT_EQ(Insert("1", "x", "y"), 46);
}

TEST_F(Flat, TheVersionIsThatOfTheRecordManager) {
  Start();
  uint8_t version[6] = {0, 0, 0, 0, 0, 0xEE};
  EXPECT_EQ(api_->GetVersion(version), 0);
  EXPECT_NE(version[0] | version[1], 0);
  EXPECT_EQ(version[5], 0xEE) << "five bytes and no more";
}

TEST_F(Flat, TextsLeaveAsTheSettingsSay) {
  const std::string name = Bytes("表示");
  Start({.fixedArea = 0, .unicode = 0});
  ASSERT_EQ(api_->Open(kPeople), 0);
  api_->SetFieldData(kPeople, 1, name.c_str());
  EXPECT_EQ(TakeBytes(api_->GetFieldData(kPeople, 1)), name) << "bytes in a wide string's room";

  Start({.fixedArea = 1, .unicode = 1});
  ASSERT_EQ(api_->Open(kPeople), 0);
  api_->SetFieldData(kPeople, 1, name.c_str());
  const auto* area = static_cast<const char*>(api_->GetFieldData(kPeople, 1));
  EXPECT_EQ(area, name);
  int32_t length = 0;
  std::memcpy(&length, area - sizeof length, sizeof length);
  EXPECT_EQ(length, static_cast<int32_t>(name.size()));
  EXPECT_EQ(api_->GetTableName(kNotes), area) << "one area for all";
  EXPECT_STREQ(area, "Notes");
  EXPECT_EQ(api_->GetFieldName(kDays, 0), area);
  EXPECT_STREQ(area, "") << "a closed table has no field names";
}

}  // namespace
}  // namespace qrn::test
