// What the flat functions open and create with, and what they keep: their own settings, or those of
// the database control that they are attached to.

#include <filesystem>

#include "PlayedControls.h"
#include "core/Record.h"
#include "core/Table.h"
#include "platform/Bstr.h"
#include "platform/BtrCall.h"
#include "tests/fields/IniFile.h"

namespace qrn::test {
namespace {

std::string calls;  // "open(owner,mode) create(file,flags,null value) update(length) "

std::string FileName(const void* path) {
  return std::filesystem::path(static_cast<const char*>(path)).filename().string();
}

int16_t BTR_CALL Noting(uint16_t operation, void* posBlock, void* data, uint32_t* length, void* key,
                        uint8_t keyLength, int8_t keyNumber) {
  const auto* bytes = static_cast<const uint8_t*>(data);
  if (operation == BtrOpOpen && keyNumber != -2) {  // the dictionary library opens read only
    calls += "open(" + std::string(static_cast<const char*>(data)) + "," +
             std::to_string(keyNumber) + ") ";
  }
  if (operation == BtrOpCreate) {
    calls += "create(" + FileName(key) + "," + std::to_string(bytes[10]) + "," +
             std::to_string(bytes[16 + 11]) + ") ";
  }
  if (operation == BtrOpUpdate) calls += "update(" + std::to_string(*length) + ") ";
  ReplaceBtrCall(nullptr);
  const int16_t status = BtrCall(operation, posBlock, data, length, key, keyLength, keyNumber);
  ReplaceBtrCall(&Noting);
  return status;
}

struct FlatSettings : ::testing::Test {
  FlatSettings() {
    btr.AllOpen = 0;
    btr.OwnerName.SetNarrow("");
    btr.OpenMode = 2;  // OpenReadOnly in the control's own numbers
    btr.DbControlStart();
    btr.formWindow = &form;
    ReplaceBtrCall(&Noting);
    calls.clear();
  }
  ~FlatSettings() override {
    ReplaceBtrCall(nullptr);
    TheFlatState() = DbFlatState{};
  }

  static std::string Calls() { return std::exchange(calls, {}); }

  Company company;
  TextWindow form;
  ShownMessages messages;
  PlayedBtr btr{"Db", &form, company.Directory()};
};

// The stored open mode goes to the record manager as it is: here, at a start and on demand.
TEST_F(FlatSettings, AnAttachByNameOpensAsTheControlIsSet) {
  EXPECT_EQ(::DbAttachControl("Db", "Form1"), 0);
  ::DbSetOwnerName(0, "own", -4);
  EXPECT_EQ(::DbOpen(kPeople), 0);
  EXPECT_EQ(Calls(), "open(,2) ");
  EXPECT_EQ(::DbOpen(kPeople), -2);
  EXPECT_EQ(::DbClose(kPeople), 0);
  btr.OwnerName.SetNarrow("theirs");
  EXPECT_EQ(::DbOpen(kPeople), 0) << "the file has no owner, so any name does";
  EXPECT_EQ(Calls(), "open(theirs,2) ");
  btr.DDFDir.SetNarrow("");
  EXPECT_EQ(::DbOpen(kDays), -16) << "its directory counts, at every call";
  EXPECT_EQ(::DbCreate(kDays), -16);
  EXPECT_EQ(Calls(), "");
}

TEST_F(FlatSettings, AnAttachByWindowCreatesAsTheControlIsSetAndOpensAsItsOwn) {
  EXPECT_EQ(::DbAttachControlByHwnd("Db", &form), 0);
  EXPECT_EQ(::DbOpen(kPeople), -16) << "its own directory is empty";
  EXPECT_EQ(Calls(), "");
  EXPECT_EQ(::DbCreate(kPeople), 0);
  EXPECT_EQ(Calls().substr(0, 18), "create(People.btr,");
  CopyText(TheFlatState().DdfDir, company.Directory());
  ::DbSetOpenMode(0, -1);
  EXPECT_EQ(::DbOpen(kPeople), 0);
  EXPECT_EQ(Calls(), "open(,-1) ");
}

TEST_F(FlatSettings, TheStoredModeServesAtTheStartAndOnDemand) {
  EXPECT_EQ(TheRegistry().DbOpenOnDemand(btr.GetDictionary()->Tables[kPeople], &form, "Db"), 0);
  EXPECT_EQ(Calls(), "open(,2) ");
  PlayedBtr other("Db2", &form, company.Directory());
  other.OpenMode = 5;
  other.CacheDDF = 0;
  other.DbControlStart();
  EXPECT_EQ(Calls(), "open(,5) open(,5) open(,5) ");
  btr.OpenMode = 1;
  EXPECT_EQ(btr.DbOpen("Days"), 0);
  EXPECT_EQ(Calls(), "open(,-1) ") << "the control's own method maps it";
}

TEST_F(FlatSettings, AFailedInitializeEmptiesTheDirectory) {
  EXPECT_EQ(::DbInitialize(company.Directory().c_str()), 0);
  EXPECT_EQ(TheFlatState().DdfDir, company.Directory());
  EXPECT_NE(::DbInitialize((company.Directory() + "/none").c_str()), 0);
  EXPECT_STREQ(TheFlatState().DdfDir, "");
}

// "Whatever was built" stays, in a control as here.
TEST_F(FlatSettings, ADictionaryThatBreaksOffStaysAsFarAsItCame) {
  FakeLexbase lexbase;
  lexbase.File(4, "People", "People").Field({1, 4, "Code", kInteger, 0, 4});
  lexbase.Fail("index", 94);
  EXPECT_EQ(::DbInitialize("/data"), 94);
  EXPECT_EQ(::DbGetNumOfTable(), 1);
  EXPECT_EQ(::DbGetNumOfField(0), 1);
  EXPECT_STREQ(TheFlatState().DdfDir, "");
  EXPECT_EQ(::DbTerminate(), 0);
  btr.DDFDir.SetNarrow("/data");
  EXPECT_EQ(btr.DbLoadDDF(), 94);
  int32_t count = 0;
  EXPECT_EQ(btr.DbGetNumOfTable(count), 0);
  EXPECT_EQ(count, 1);
}

TEST_F(FlatSettings, TheEmptySlotIsGivenBackToo) {
  TheSettings().delayed_resolve = 1;
  EXPECT_EQ(::DbInitialize(company.Directory().c_str()), 0);
  EXPECT_EQ(::DbOpen(kTableCount), 12) << "its record buffer is there all the same";
  EXPECT_EQ(messages.Take(), "");
  EXPECT_EQ(::DbTerminate(), 0);
  TheSettings().delayed_resolve = 0;
}

TEST_F(FlatSettings, OfTwoFieldsOfOneNameTheFirstIsWritten) {
  EXPECT_EQ(::DbInitialize(company.Directory().c_str()), 0);
  EXPECT_EQ(::DbOpen(kPeople), 0);
  DbTableInfo& table = TheFlatState().CurrentDictionary->Tables[kPeople];
  std::strcpy(table.Fields[2].Name, table.Fields[1].Name);
  ::DbClearFieldBuffer(kPeople);
  EXPECT_EQ(::DbSetFieldData(kPeople, 2, "by name"), 0);
  EXPECT_STREQ(DbReadField(TheEngine(), table, 1), "by name");
  EXPECT_STREQ(DbReadField(TheEngine(), table, 2), "");
  EXPECT_EQ(::DbSetFieldData(kPeople, 5, "x"), -5);
  EXPECT_EQ(::DbTerminate(), 0);
}

TEST_F(FlatSettings, TheSettingsFileReachesTheCreate) {
  IniFile file;
  file.Set("null_key", "32");
  file.Set("file_flag", "2");
  QuorinSettings settings;
  DbEngine engine(settings);
  DbTableInfo& table = btr.GetDictionary()->Tables[kPeople];
  EXPECT_EQ(DbTableCreateIn(engine, table, company.Directory().c_str()), 0);
  EXPECT_EQ(Calls(), "create(People.btr,2,32) ");
}

// In a process of its own, since the settings are read once.
TEST(FlatSettingsDeathTest, ABadSignNibbleIsToldAsTheRegistryIsMade) {
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  IniFile file;
  file.Set("sign_nibble", "7");
  EXPECT_EXIT(
      {
        const int nibble = TheRegistry().sign_nibble;
        std::exit(&TheSettings() == &TheRegistry() ? nibble : 1);
      },
      ::testing::ExitedWithCode(7), "VE823");
}

}  // namespace
}  // namespace qrn::test
