// While one of the engine's message boxes waits, a timer or another form of the application runs:
// whatever it ends, the call that showed the box comes to its own end.

#include "PlayedControls.h"
#include "core/RecordPosition.h"
#include "core/Table.h"
#include "fields/FieldText.h"
#include "platform/BtrCall.h"
#include "platform/MessageBox.h"

namespace qrn::test {
namespace {

constexpr int32_t kNoSuchType = 99;

std::function<void()> meanwhile;  // run by the first box
std::string codes;
uint16_t refused = 0;  // the record manager's operation that fails with 41, none for 0

int Interrupted(const char* text, unsigned) {
  codes += std::string(text, 5) + " ";
  EXPECT_TRUE(IsBoxUp());
  if (const auto run = std::exchange(meanwhile, nullptr)) run();
  return kBoxOk;
}

int16_t BTR_CALL Refusing(uint16_t operation, void* posBlock, void* data, uint32_t* length,
                          void* key, uint8_t keyLength, int8_t keyNumber) {
  if (operation == refused && refused != 0) return 41;
  ReplaceBtrCall(nullptr);
  const int16_t status = BtrCall(operation, posBlock, data, length, key, keyLength, keyNumber);
  ReplaceBtrCall(&Refusing);
  return status;
}

struct WhileABoxIsUp : ::testing::Test {
  WhileABoxIsUp() {
    ReplaceShowBox(&Interrupted);
    ReplaceBtrCall(&Refusing);
    codes.clear();
  }
  ~WhileABoxIsUp() override {
    meanwhile = nullptr;
    refused = 0;
    ::DbTerminate();
    ReplaceBtrCall(nullptr);
    ReplaceShowBox(nullptr);
    TheFlatState() = DbFlatState{};
    TheSettings().delayed_resolve = 0;
  }

  // A fresh dictionary with its tables open.
  void Begin() {
    EXPECT_EQ(::DbInitialize(company.Directory().c_str()), 0);
    for (const int16_t table : {kPeople, kNotes, kDays}) EXPECT_EQ(::DbOpen(table), 0);
    ::DbClearFieldBuffer(kPeople);
  }
  static DbTableInfo& Table(int16_t table) {
    return TheFlatState().CurrentDictionary->Tables[table];
  }
  static void SpoilTypes() {
    for (const int16_t table : {kPeople, kNotes, kDays}) Table(table).Fields[0].Type = kNoSuchType;
  }

  // Runs `call` with `interruption` while its first box is up: "code shown".
  static std::string Run(const std::function<int32_t()>& call,
                         const std::function<void()>& interruption) {
    codes.clear();
    meanwhile = interruption;
    const int32_t code = call();
    EXPECT_EQ(meanwhile, nullptr) << "no box came up";
    EXPECT_FALSE(IsBoxUp());
    return std::to_string(code) + " " + codes;
  }

  Company company;
  TextWindow form;
};

TEST_F(WhileABoxIsUp, TheDictionaryMayEndUnderAnyFlatFunction) {
  int16_t result = 0, count = 0;
  uint16_t percentage = 0;
  const auto refuse = [](uint16_t operation) { refused = operation; };
  const auto exAccess = [&](int16_t operation, const char* condition, const char* fields) {
    return ::DbExAccess(operation, kPeople, condition, fields, 0, 0, 1, 0, &result, &count);
  };
  const struct {
    const char* outcome;  // with what follows it in the brackets where more is shown
    std::function<void()> prepare;
    std::function<int32_t()> call;
  } cases[] = {
      {"0 VE813 ", [&] { refuse(BtrOpClose); }, ::DbTerminate},
      {"0 VE813 ", [&] { refuse(BtrOpClose); },
       [&] { return ::DbInitialize(company.Directory().c_str()); }},
      {"0 VE011 ", SpoilTypes, [] { return ::DbSetFieldData(kPeople, 4, "1"); }},
      {"0 VE011 ", SpoilTypes, [] { return ::DbSetFieldData(kNotes, 1, "text"); }},
      {"3 VE011 ", SpoilTypes, [] { return ::DbAccess(BtrOpInsert, kNotes, 0); }},
      {"-6 VE804 ", [] {}, [] { return ::DbAccess(BtrOpGetFirst, kPeople, 99); }},
      {"-6 VE804 ", [] {}, [] { return ::DbGetDirect(kPeople, 1, 99); }},
      {"-1 VE804 ", [] {}, [] { return ::DbGetByPercentage(kPeople, 99, 1); }},
      {"-1 VE804 ", [] {}, [&] { return ::DbFindPercentage(kPeople, 99, 1, &percentage); }},
      {"41 VE007 ",
       [&] {
         EXPECT_EQ(::DbClose(kPeople), 0);
         refuse(BtrOpCreate);
       },
       [] { return ::DbCreate(kPeople); }},
      {"0 VE806 ",
       [] {
         EXPECT_EQ(::DbClose(kPeople), 0);
         ++Table(kPeople).RecordLength;
       },
       [] { return ::DbOpen(kPeople); }},
      {"-7 VE044 ", [] {}, [&] { return exAccess(1, "", "0"); }},
      {"-8 VE041 ", [] {}, [&] { return exAccess(36, "Code = 1", "0"); }},
      {"-8 VE818 ", [] {}, [&] { return exAccess(36, "@Nothing = 1", "0"); }},
      {"-9 VE040 ", [] {}, [&] { return exAccess(36, "", ""); }},
      {"-9 VE025 ", [] {}, [&] { return exAccess(36, "", "0,77"); }},
  };
  for (const auto& [outcome, prepare, call] : cases) {
    Begin();
    prepare();
    std::string shown = Run(call, [] { ::DbTerminate(); });
    EXPECT_TRUE(shown.starts_with(outcome)) << shown << "for " << outcome;
    refused = 0;
    ::DbTerminate();
    Begin();
    prepare();
    // Another dictionary comes in the place of the one in use.
    shown = Run(call, [&] { Begin(); });
    EXPECT_TRUE(shown.starts_with(outcome)) << shown << "for " << outcome;
    refused = 0;
    EXPECT_EQ(::DbTerminate(), 0);
    EXPECT_EQ(::DbGetNumOfTable(), -12);
  }
}

// The deferred load of a table's fields, with the dictionary ended while its failure is told.
TEST_F(WhileABoxIsUp, ATableMayGoWhileItsFieldsAreLoaded) {
  TheSettings().delayed_resolve = 1;
  for (const char* failing : {"open", "field", "index", "close"}) {
    for (const bool again : {false, true}) {
      FakeLexbase lexbase;
      lexbase.File(4, "People", "People").Field({1, 4, "Code", kInteger, 0, 4}).Index(4, 1, 0, 0);
      ASSERT_EQ(::DbInitialize(company.Directory().c_str()), 0);
      DbTableInfo& table = Table(0);
      const auto interruption = [&] {
        EXPECT_EQ(lexbase.OpenReadings(), 0) << "another load may begin";
        ::DbTerminate();
        lexbase.Fail("none", 0);
        if (!again) return;
        EXPECT_EQ(::DbInitialize(company.Directory().c_str()), 0);
      };
      lexbase.Fail(failing, 22);
      const std::string outcome = Run(
          [&] { return DbOpenOrCreate(TheEngine(), table, company.Directory().c_str(), "", 0); },
          interruption);
      EXPECT_EQ(outcome.substr(0, 5), "-1 VE") << failing;
      EXPECT_TRUE(outcome.ends_with(" VE803 ")) << outcome << " has the table's name";
      EXPECT_EQ(::DbTerminate(), 0);
    }
  }
}

TEST_F(WhileABoxIsUp, ATableThatIsClosedIsNotReadOn) {
  Begin();
  SpoilTypes();
  DbTableInfo& days = Table(kDays);
  days.Fields[1].Flags = days.Fields[2].Flags = kFieldNullable;
  EXPECT_EQ(Run([&] { return IsFieldNull(TheSettings(), days, "Word"); },
                [] { EXPECT_EQ(::DbClose(kDays), 0); }),
            "0 VE011 ");
  EXPECT_EQ(Run([] { return ::DbSetFieldData(kPeople, 3, "2024/01/31"); },
                [] { EXPECT_EQ(::DbClose(kPeople), 0); }),
            "0 VE011 ");
}

TEST_F(WhileABoxIsUp, AControlMayLoadAnewOrGoWithItsForm) {
  const std::function<void(PlayedBtr&)> interruptions[] = {
      [](PlayedBtr& btr) { btr.DbLoadDDF(); },
      [](PlayedBtr& btr) { btr.WindowGoes(); },
      [](PlayedBtr& btr) {
        AttachFlatState(btr, btr.GetDictionary(), "Db");
        ::DbTerminate();
      },
  };
  const struct {
    const char* outcome;
    std::function<int32_t(PlayedBtr&)> call;
    uint16_t refused = 0;
  } cases[] = {
      {"0 VE813 ", [](PlayedBtr& btr) { return btr.DbReset(); }, BtrOpClose},
      {"0 VE813 ", [](PlayedBtr& btr) { return btr.DbLoadDDF(); }, BtrOpClose},
      {"41 VE803 ", [](PlayedBtr& btr) { return btr.DbCloseAll(); }, BtrOpClose},
      {"0 VE011 ", [](PlayedBtr& btr) { return btr.DbSetFieldData("People", "Pay", "1"); }},
      {"0 VE011 ", [](PlayedBtr& btr) { return btr.DbTransferFromControl("People"); }},
      {"3 VE011 ", [](PlayedBtr& btr) { return btr.DbAccess(BtrOpInsert, "Notes", "ById"); }},
      {"0 VE011 ", [](PlayedBtr& btr) { return btr.DbIsNull("Days", "Word") ? 1 : 0; }},
      {"0 VE813 ",
       [](PlayedBtr& btr) {
         btr.WindowGoes();
         return 0;
       },
       BtrOpClose},
  };
  for (const auto& interruption : interruptions) {
    for (const auto& [outcome, call, operation] : cases) {
      PlayedBtr btr("Db", &form, company.Directory());
      btr.DbControlStart();
      for (const int16_t table : {kPeople, kNotes, kDays}) {
        btr.GetDictionary()->Tables[table].Fields[0].Type = kNoSuchType;
      }
      refused = operation;
      const std::string shown = Run([&] { return call(btr); },
                                    [&] {
                                      refused = 0;
                                      interruption(btr);
                                    });
      EXPECT_TRUE(shown.starts_with(outcome)) << shown << "for " << outcome;
      TheFlatState() = DbFlatState{};
    }
  }
}

}  // namespace
}  // namespace qrn::test
