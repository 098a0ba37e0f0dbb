// The database control from its start to its end, and its methods against real files.

#include <fstream>

#include "PlayedControls.h"
#include "platform/MessageBox.h"

namespace qrn::test {
namespace {

struct DatabaseControl : ::testing::Test {
  void TearDown() override { TheFlatState() = DbFlatState{}; }

  std::unique_ptr<PlayedBtr> Make(const char* name = "Db") {
    return std::make_unique<PlayedBtr>(name, &form, company.Directory());
  }
  std::unique_ptr<PlayedBtr> Started(const char* name = "Db") {
    auto btr = Make(name);
    btr->DbControlStart();
    return btr;
  }
  static std::string OpenTables(PlayedBtr& btr) {
    std::string names;
    for (const char* name : {"People", "Notes", "Days"}) {
      if (btr.DbIsOpen(name) == 1) names += std::string(name) + " ";
    }
    return names;
  }
  static void Insert(PlayedBtr& btr, const char* code, const char* name) {
    btr.DbClearFieldBuffer("People");
    btr.DbSetFieldData("People", "Code", code);
    btr.DbSetFieldData("People", "Name", name);
    EXPECT_EQ(btr.DbAccess(BtrOpInsert, "People", "ByCode"), 0);
  }

  Company company;
  TextWindow form;
  ShownMessages messages;
};

TEST_F(DatabaseControl, StartsWhenItHasAllItNeeds) {
  const struct {
    const char* what;
    std::function<void(PlayedBtr&)> change;
    const char *open, *shown, *notices;
  } cases[] = {
      {"all there", [](PlayedBtr&) {}, "People Notes Days ", "", "1 ready "},
      {"no window yet", [](PlayedBtr& btr) { btr.form = nullptr; }, "", "", "0 "},
      {"no directory", [](PlayedBtr& btr) { btr.DDFDir.SetNarrow(""); }, "", "", "0 "},
      {"no name", [](PlayedBtr& btr) { btr.name = ""; }, "", "VE814", "0 "},
      {"no dictionary there", [](PlayedBtr& btr) { btr.DDFDir.SetNarrow("/nowhere"); }, "", "VE028",
       "0 "},
      {"tables left closed", [](PlayedBtr& btr) { btr.AllOpen = 0; }, "", "", "1 ready "},
      {"tables that do not open",
       [](PlayedBtr& btr) {
         std::ofstream(std::string(btr.DdfDirText()) + "/Notes.btr") << "no data file";
       },
       "People ", "VE803", "0 "},
      {"design time", [](PlayedBtr& btr) { btr.userMode = false; }, "", "", "0 "},
  };
  for (const auto& row : cases) {
    Company own;
    PlayedList list(kTypeListBox, {"lst", &form}, "Db");
    PlayedScroll bar({"bar", &form}, "Db");
    PlayedBtr btr("Db", &form, own.Directory());
    row.change(btr);
    btr.DbControlStart();
    EXPECT_EQ(OpenTables(btr), row.open) << row.what;
    EXPECT_EQ(messages.TakeCodes(), row.shown) << row.what;
    EXPECT_EQ(std::to_string(list.reloads) + " " + bar.log, row.notices) << row.what;
  }
}

TEST_F(DatabaseControl, StartsOnceAndAgainWithANewWindow) {
  PlayedScroll bar({"bar", &form}, "Db");
  const auto btr = Started();
  btr->DbControlStart();
  EXPECT_EQ(bar.log, "ready ");
  btr->WindowGoes();
  EXPECT_EQ(btr->GetDictionary(), nullptr);
  btr->DbControlStart();
  EXPECT_EQ(bar.log, "ready ready ");
}

PlayedBtr* leaving = nullptr;

int CloseTheForm(const char*, unsigned) {
  leaving->WindowGoes();
  return kBoxOk;
}

TEST_F(DatabaseControl, AFormMayGoWhileAMessageOfItsStartIsUp) {
  Started()->DbCloseAll();  // the files are made
  const std::string directory = company.Directory();
  std::filesystem::copy_file(directory + "/Days.btr", directory + "/People.btr",
                             std::filesystem::copy_options::overwrite_existing);
  PlayedScroll bar({"bar", &form}, "Db");
  const auto btr = Make();
  leaving = btr.get();
  ReplaceShowBox(CloseTheForm);
  btr->DbControlStart();
  EXPECT_EQ(btr->GetDictionary(), nullptr);
  EXPECT_EQ(bar.log, "") << "nothing is ready";
}

TEST_F(DatabaseControl, AFormMayGoAgainWhileAMessageOfItsEndIsUp) {
  const auto btr = Started();
  std::ranges::fill(btr->GetDictionary()->Tables[kPeople].PosBlock, 0);  // does not close
  leaving = btr.get();
  ReplaceShowBox(CloseTheForm);
  btr->WindowGoes();
  EXPECT_EQ(btr->GetDictionary(), nullptr);
}

TEST_F(DatabaseControl, TheSecondOfADirectoryCopiesTheFirst) {
  const auto first = Started("Db1");
  ASSERT_EQ(first->DbSetFileName("People", "x"), -2);
  std::filesystem::rename(company.Directory() + "/file.ddf", company.Directory() + "/away");
  const auto second = Started("Db2");
  EXPECT_EQ(messages.Take(), "") << "no file is read";
  EXPECT_NE(second->GetDictionary(), first->GetDictionary());
  EXPECT_EQ(OpenTables(*second), "People Notes Days ") << "each opens for itself";
  Insert(*first, "1", "Abe");
  EXPECT_EQ(second->DbAccess(BtrOpGetFirst, "People", "ByCode"), 0);
  EXPECT_EQ(second->DbGetFieldData("People", "Name"), "Abe");
  EXPECT_EQ(first->DbCloseAll(), 0);
  EXPECT_EQ(OpenTables(*second), "People Notes Days ");
  auto alone = Make("Db3");
  alone->CacheDDF = 0;
  alone->DbControlStart();
  EXPECT_EQ(messages.TakeCodes(), "VE028");
}

TEST_F(DatabaseControl, AnInstallationMayMoveTheData) {
  const TempFolder folder;
  std::ofstream(folder.Path("quorin.ini"))
      << "[Branch]\nDb=" << company.Directory() << "\nEmpty=\n";
  setenv("QUORIN_INI_DIR", folder.Text().c_str(), 1);
  const struct {
    const char *name, *section;
    bool userMode, found;
  } cases[] = {{"Db", "Branch", true, true},     {"Db", "branch", true, true},
               {"Db", "Branch", false, false},   {"Db", "Absent", true, false},
               {"Other", "Branch", true, false}, {"Empty", "Branch", true, false},
               {"Db", "", true, false}};
  for (const auto& row : cases) {
    PlayedBtr btr(row.name, &form, "/persisted");
    btr.DistName.SetNarrow(row.section);
    btr.userMode = row.userMode;
    btr.DbControlStart();
    EXPECT_EQ(btr.GetDictionary() != nullptr, row.found) << row.name << row.section;
    EXPECT_EQ(std::string(btr.DdfDirText()), row.found ? company.Directory() : "/persisted");
  }
  unsetenv("QUORIN_INI_DIR");
}

TEST_F(DatabaseControl, ADesignersDirectoryTakesEffectAtOnce) {
  auto btr = std::make_unique<PlayedBtr>("Db", &form);
  TheSettings().delayed_resolve = 1;
  btr->userMode = false;
  btr->DDFDir.SetNarrow(company.Directory());
  btr->DirectoryWasPut();
  ASSERT_NE(btr->GetDictionary(), nullptr);
  EXPECT_EQ(TheSettings().delayed_resolve, 0) << "the designer sees all fields";
  EXPECT_NE(TheRegistry().ResolveTable(&form, "Db", "People"), nullptr);
  EXPECT_EQ(TheRegistry().GetFieldType(&form, "Db", "People", "Name"), kString);
  EXPECT_EQ(btr->redraws, 1);
  btr->DDFDir.SetNarrow("/nowhere");
  btr->DirectoryWasPut();
  EXPECT_EQ(btr->GetDictionary(), nullptr);
  EXPECT_EQ(messages.TakeCodes(), "VE028");
  EXPECT_EQ(TheRegistry().ResolveTable(&form, "Db", "People"), nullptr);
  btr->userMode = true;
  btr->DDFDir.SetNarrow(company.Directory());
  btr->DirectoryWasPut();
  EXPECT_EQ(btr->GetDictionary(), nullptr) << "at run time it waits for DbLoadDDF";
  EXPECT_EQ(btr->DbLoadDDF(), 0);
  EXPECT_EQ(btr->DbOpen("People"), 0);
}

// Every method that needs a table, on each way to lack it.
TEST_F(DatabaseControl, MethodsCheckDictionaryTableAndOpenState) {
  using B = PlayedBtr&;
  using T = const char*;
  int32_t number = 77;
  uint16_t percentage = 77;
  std::string text = "kept";
  ExAccessResult result{77, 77};
  const struct {
    const char* name;
    std::function<int32_t(B, T)> call;
    bool needsOpen;
  } cases[] = {
      {"DbOpen", [](B b, T t) { return b.DbOpen(t); }, false},
      {"DbCreate", [](B b, T t) { return b.DbCreate(t); }, false},
      {"DbSetFileName", [](B b, T t) { return b.DbSetFileName(t, "a"); }, false},
      {"DbSetFieldData", [](B b, T t) { return b.DbSetFieldData(t, "Name", ""); }, true},
      {"DbGetRecordLength", [&](B b, T t) { return b.DbGetRecordLength(t, number); }, false},
      {"DbGetNumOfField", [&](B b, T t) { return b.DbGetNumOfField(t, number); }, false},
      {"DbGetNumOfIndex", [&](B b, T t) { return b.DbGetNumOfIndex(t, number); }, false},
      {"DbGetFieldName", [&](B b, T t) { return b.DbGetFieldName(t, 0, text); }, false},
      {"DbGetIndexName", [&](B b, T t) { return b.DbGetIndexName(t, 0, text); }, false},
      {"DbClose", [](B b, T t) { return b.DbClose(t); }, true},
      {"DbAccess", [](B b, T t) { return b.DbAccess(12, t, "ByCode"); }, true},
      {"DbTransferToControl", [](B b, T t) { return b.DbTransferToControl(t); }, true},
      {"DbTransferFromControl", [](B b, T t) { return b.DbTransferFromControl(t); }, true},
      {"DbClearControlData", [](B b, T t) { return b.DbClearControlData(t); }, true},
      {"DbUnlock", [](B b, T t) { return b.DbUnlock(t, 0); }, true},
      {"DbGetDirect", [](B b, T t) { return b.DbGetDirect(t, 1, "ByCode"); }, true},
      {"DbGetDataSize", [](B b, T t) { return b.DbGetDataSize(t, "Name"); }, true},
      {"DbGetDataType", [](B b, T t) { return b.DbGetDataType(t, "Name"); }, true},
      {"DbGetByPercentage", [](B b, T t) { return b.DbGetByPercentage(t, "ByCode", 0); }, true},
      {"DbFindPercentage", [&](B b, T t) { return b.DbFindPercentage(t, "ByCode", 0, percentage); },
       true},
      {"DbExAccess", [&](B b, T t) { return b.DbExAccess(t, {}, "ByCode", result); }, true},
      {"DbGetNumOfRecords", [&](B b, T t) { return b.DbGetNumOfRecords(t, number); }, true},
      {"DbClearFieldBuffer", [](B b, T t) { return b.DbClearFieldBuffer(t); }, true},
  };
  PlayedBtr empty("Empty", &form);
  auto btr = Make();
  btr->AllOpen = 0;
  btr->DbControlStart();
  for (const auto& row : cases) {
    EXPECT_EQ(row.call(empty, "People"), -20) << row.name;
    EXPECT_EQ(row.call(*btr, "people"), -4) << row.name;
    EXPECT_EQ(row.call(*btr, ""), -4) << row.name;
    if (!row.needsOpen) continue;
    EXPECT_EQ(row.call(*btr, "People"), -3) << row.name;
  }
  EXPECT_EQ(empty.DbIsOpen("People"), 0);
  EXPECT_EQ(btr->DbIsOpen("people"), -4);
  EXPECT_EQ(empty.DbGetFieldData("People", "Name"), std::nullopt);
  EXPECT_EQ(btr->DbGetFieldData("people", "Name"), std::nullopt);
  EXPECT_EQ(btr->DbGetFieldData("People", "Name"), "") << "closed: no text, but no failure";
  EXPECT_EQ(empty.DbGetPosition("People"), -1);
  EXPECT_EQ(btr->DbGetPosition("People"), -1);
  EXPECT_FALSE(btr->DbIsNull("people", "Left"));
  EXPECT_EQ(empty.DbExGetPosition(0, 0), -1);
  EXPECT_EQ(empty.DbOpenAll(), -20);
  EXPECT_EQ(empty.DbCloseAll(), -20);
  EXPECT_EQ(empty.DbLoadDDF(), -21);
  EXPECT_EQ(empty.DbAccessByID(12, 0, 0), -20);
  EXPECT_EQ(std::to_string(number) + text, "77kept") << "failures leave out values alone";
  EXPECT_EQ(percentage, 77);
}

TEST_F(DatabaseControl, IdsAreCheckedAgainstTheCounts) {
  const auto btr = Started();
  const struct {
    int32_t id;
    int32_t tableName, access, fieldName, indexName, setById;
    bool reads;
  } cases[] = {
      {-1, -4, -15, -13, -14, -4, false},           {0, 0, 9, 0, 0, 0, true},
      {kTableCount, 0, -3, 0, 0, -4, false},  // the entry behind the last table
      {kTableCount + 1, -4, -15, 0, -4, -4, false}, {6, -4, -15, -13, -14, -4, false},
  };
  for (const auto& row : cases) {
    std::string name = "kept";
    EXPECT_EQ(btr->DbGetTableName(row.id, name), row.tableName) << row.id;
    EXPECT_EQ(btr->DbAccessByID(BtrOpGetFirst, row.id, 0), row.access) << row.id;
    EXPECT_EQ(btr->DbGetFieldName("People", row.id, name), row.fieldName) << row.id;
    EXPECT_EQ(btr->DbGetIndexName("People", row.id, name), row.indexName) << row.id;
    EXPECT_EQ(btr->DbSetFieldDataByID(row.id, 0, "1"), row.setById) << row.id;
    EXPECT_EQ(btr->DbGetFieldDataByID(row.id, 0).has_value(), row.reads) << row.id;
  }
  std::string name = "kept";
  EXPECT_EQ(btr->DbGetTableName(kTableCount, name), 0);
  EXPECT_EQ(name, "") << "an empty entry has an empty name";
  EXPECT_EQ(btr->DbGetIndexName("People", kByPlaceCode, name), 0);
  EXPECT_EQ(name, "Code") << "the field that the segment indexes";
}

TEST_F(DatabaseControl, RecordsAreReachedByEveryWay) {
  const auto btr = Started();
  Insert(*btr, "2", "Ito");
  Insert(*btr, "1", "Abe");
  const auto name = [&] { return *btr->DbGetFieldData("People", "Name"); };
  EXPECT_EQ(btr->DbAccess(BtrOpGetFirst, "People", "ByCode"), 0);
  EXPECT_EQ(name(), "Abe");
  EXPECT_EQ(btr->DbAccess(BtrOpGetFirst, "People", ""), -6);
  EXPECT_EQ(btr->DbAccess(BtrOpGetFirst, "People", "bycode"), -6);
  EXPECT_EQ(btr->DbAccess(BtrOpGetNext, "People", "ByCode"), 0);
  const int32_t position = btr->DbGetPosition("People");
  uint16_t percentage = 0;
  EXPECT_EQ(btr->DbFindPercentage("People", "", position, percentage), 0);
  EXPECT_EQ(btr->DbFindPercentage("People", "Nothing", position, percentage), -6);
  EXPECT_EQ(btr->DbGetByPercentage("People", "ByName", 0), 0);
  EXPECT_EQ(name(), "Abe");
  EXPECT_EQ(btr->DbGetByPercentage("People", "", 0), -6);
  EXPECT_EQ(btr->DbGetDirect("People", position, "ByCode"), 0);
  EXPECT_EQ(name(), "Ito");
  EXPECT_EQ(btr->DbGetDirect("People", position, ""), -6);
  int32_t count = 0;
  EXPECT_EQ(btr->DbGetNumOfRecords("People", count), 0);
  EXPECT_EQ(count, 2);
  EXPECT_EQ(btr->DbGetDataSize("People", "Name"), 20);
  EXPECT_EQ(btr->DbGetDataType("People", "Pay"), kDecimal);
  EXPECT_EQ(btr->DbGetDataSize("People", "Nothing"), -5);
  EXPECT_EQ(btr->DbSetFieldData("People", "Nothing", "x"), -5);
  EXPECT_EQ(btr->DbAccessByID(BtrOpGetLast, kPeople, kByCode), 0);
  EXPECT_EQ(btr->DbGetFieldDataByID(kPeople, 1), "Ito");
}

TEST_F(DatabaseControl, ExtendedResultsAreReadByFieldName) {
  const auto btr = Started();
  for (int i = 1; i <= 5; ++i) Insert(*btr, std::to_string(i).c_str(), i % 2 ? "odd" : "even");
  btr->DbAccess(BtrOpGetFirst, "People", "ByCode");
  const ExAccess access{.Operation = 36,
                        .SearchCond = "@Name = 'even'",
                        .Fields = "Name,Code",
                        .SkipRecords = 100,
                        .MaxRecords = 10};
  ExAccessResult result{-1, 0};
  btr->DbExSetMode("EG");
  EXPECT_EQ(btr->DbExAccess("People", access, "ByCode", result), 9);
  ASSERT_EQ(result.NumOfResults, 2);
  EXPECT_EQ(btr->DbExGetFieldData(result.ResultId, "Code", 1), "4");
  EXPECT_EQ(btr->DbExGetFieldData(result.ResultId, "Code", 2), std::nullopt);
  EXPECT_GT(btr->DbExGetPosition(result.ResultId, 0), 0);
  EXPECT_EQ(btr->DbExAccess("People", access, "Nothing", result), -6);
  EXPECT_EQ(btr->DbExSetMode("U"), -1);
  EXPECT_STREQ(TheEngine().ExMode, "EG");
  EXPECT_EQ(btr->DbExSetMode("UC"), 0);
}

TEST_F(DatabaseControl, FailuresRaiseTheEventAndThenTheMessage) {
  auto btr = Make();
  btr->AllOpen = 0;
  btr->DbControlStart();
  ASSERT_EQ(btr->DbSetFileName("Notes", "absent.btr"), 0);
  EXPECT_EQ(btr->DbOpen("Notes"), 12);
  EXPECT_EQ(btr->errors, "Notes:12 ");
  EXPECT_EQ(messages.Take(), "VE803 Btrieveファイル Notes のオープンに失敗。(12)");
  btr->onError = [](Status& status) { status = 0; };
  EXPECT_EQ(btr->DbOpen("Notes"), 12) << "the handler silences the message, not the result";
  EXPECT_EQ(messages.Take(), "");
  EXPECT_EQ(btr->DbOpenAll(), 12);
  EXPECT_EQ(OpenTables(*btr), "People ") << "the walk ended at the failure";
  EXPECT_EQ(btr->DbSetFileName("Notes", "no/such/folder/notes.btr"), 0);
  btr->errors.clear();
  EXPECT_NE(btr->DbCreate("Notes"), 0);
  EXPECT_EQ(messages.TakeCodes(), "VE007") << "shown by the create, before the event";
  EXPECT_EQ(btr->errors.substr(0, 6), "Notes:");
}

TEST_F(DatabaseControl, AHandlerMayUnloadTheFormItWasRaisedOn) {
  auto btr = Make();
  btr->AllOpen = 0;
  btr->DbControlStart();
  btr->DbSetFileName("People", "absent.btr");
  btr->onError = [&](Status&) { btr->WindowGoes(); };
  EXPECT_EQ(btr->DbOpenAll(), 12);
  EXPECT_EQ(messages.TakeCodes(), "VE803");
  EXPECT_EQ(btr->GetDictionary(), nullptr);
}

TEST_F(DatabaseControl, LoadingAnewClosesItsOwnTablesOnly) {
  const auto one = Started("Db1");
  const auto two = Started("Db2");
  EXPECT_EQ(one->DbLoadDDF(), 0);
  EXPECT_EQ(OpenTables(*one), "");
  EXPECT_EQ(OpenTables(*two), "People Notes Days ");
  EXPECT_EQ(one->DbOpenAll(), 0);
  EXPECT_EQ(one->DbOpen("People"), -2);
  EXPECT_EQ(one->DbReset(), 0);
  EXPECT_EQ(OpenTables(*one), "") << "the dictionary stays, its tables are closed";
  EXPECT_EQ(one->DbIsOpen("People"), 0);
}

TEST_F(DatabaseControl, MissingDataFilesAreMadeAtStart) {
  ASSERT_TRUE(std::filesystem::remove(company.Directory() + "/People.btr"));
  const auto btr = Started();
  EXPECT_EQ(OpenTables(*btr), "People Notes Days ");
  EXPECT_EQ(messages.Take(), "");
}

TEST_F(DatabaseControl, NullsAreSeenInNullableFields) {
  const auto btr = Started();
  btr->DbClearFieldBuffer("Days");
  btr->GetDictionary()->Tables[kDays].RecordBuffer[4] = 1;
  EXPECT_TRUE(btr->DbIsNull("Days", "Left"));
  EXPECT_FALSE(btr->DbIsNull("Days", "Word"));
  EXPECT_FALSE(btr->DbIsNull("Days", "Nothing"));
}

TEST_F(DatabaseControl, AFlatCallerMayFreeTheDictionaryUnderIt) {
  const auto btr = Started();
  AttachFlatState(*btr, btr->GetDictionary(), "Db");
  EXPECT_EQ(::DbTerminate(), 0);
  EXPECT_EQ(btr->GetDictionary(), nullptr);
  EXPECT_EQ(btr->DbOpen("People"), -20);
  EXPECT_EQ(btr->DbLoadDDF(), 0);
}

TEST_F(DatabaseControl, ALogoutNeedsALogin) {
  PlayedBtr btr("Db", &form);
  EXPECT_EQ(btr.DbLogOut(), 0);
  const Status in = btr.DbLogIn("btrv://user@host/db");
  EXPECT_EQ(btr.DbLogOut(), in) << "the record manager's answer, whatever it is";
  EXPECT_EQ(btr.DbLogOut(), 0) << "undone whatever the status";
}

}  // namespace
}  // namespace qrn::test
