// Every allocation of every exported function, and of what a button's click, a scroll and a fill
// run, fails once: VE001 and a code come of it, the call works again afterwards, and nothing leaks.

#include "FailingMemory.h"
#include "core/ButtonOperations.h"
#include "core/Dictionary.h"
#include "core/Gateway.h"
#include "core/ListFill.h"
#include "extended/ExResultStore.h"
#include "extended/FillFromExtended.h"
#include "fields/HeapCheck.h"
#include "platform/Bstr.h"
#include "platform/Memory.h"
#include "platform/MessageBox.h"
#include "tests/binding/PlayedControls.h"

namespace qrn::test {
namespace {

// A long key, a wide field and texts beyond what a string holds in itself.
constexpr char kLongName[] = "a name that is too long for a string's own room";

class Form final : public FieldControls {
 public:
  int32_t ReadControlField(const DbTableInfo&, const DbFieldInfo& field,
                           std::string& text) override {
    text = std::string_view(field.Name) == "Name" ? kLongName : "7";
    return 1;
  }
  void WriteControlField(const DbTableInfo&, const DbFieldInfo&, const char* text) override {
    shown = text;
  }
  void ClearControlField(const DbTableInfo&, const DbFieldInfo&) override {}

  std::string shown;
};

DbTableInfo* OpenTable(int16_t id) {
  DbDictionary* dictionary = TheFlatState().CurrentDictionary;
  if (dictionary == nullptr || dictionary->Tables[id].IsOpen == 0) return nullptr;
  return &dictionary->Tables[id];
}

class Button final : public BoundButton {
 public:
  explicit Button(int16_t table) : table_(table) {}
  DbTableInfo* Table() override { return OpenTable(table_); }
  FieldControls& Controls() override { return form; }
  int32_t IndexID() const override { return 0; }
  bool RefusedBySetData() override { return false; }
  int32_t DbLocks() const override { return 0; }

  Form form;

 private:
  int16_t table_;
};

class List final : public RowSink {
 public:
  DbTableInfo* Table() override { return OpenTable(kPeople); }
  void Empty(size_t) override {}
  bool Format(std::u16string&) override { return true; }
  bool AddRow(const char*) override { return true; }
};

// The codes of the boxes shown, "VE001 VE813".
class Boxes : Pinned {
 public:
  Boxes() {
    ReplaceShowBox([](const char* text, unsigned) {
      const NotCounted own;
      codes_ += (codes_.empty() ? "" : " ") + std::string(text, 5);
      return kBoxOk;
    });
  }
  ~Boxes() { ReplaceShowBox(nullptr); }

  std::string Take() { return std::exchange(codes_, {}); }

 private:
  static inline std::string codes_;
};

struct Call {
  const char* name;
  std::function<int32_t()> run;
  int32_t success = 0;
  int32_t failure = -1;
  const char* shown = "VE001";
  std::function<void()> prepare = [] {};
};

int32_t TextCode(void* text) {
  if (text == nullptr) return -1;
  if (text == TheFlatState().ReturnText) return -2;
  FreeBstr(static_cast<BstrText>(text));
  return 0;
}

struct WithoutMemory : ::testing::Test {
  WithoutMemory() {
    btr_.AllOpen = 0;
    btr_.DbControlStart();
    Begin();
  }
  ~WithoutMemory() override {
    ::DbTerminate();
    TheFlatState() = DbFlatState{};
    TheSettings().delayed_resolve = 0;
  }

  // A dictionary of the flat interface's own, one person and one note stored, a person current.
  void Begin() {
    ::DbTerminate();
    TheFlatState().AttachedControl = nullptr;
    ASSERT_EQ(::DbInitialize(directory_.c_str()), 0);
    for (const int16_t table : {kPeople, kNotes}) {
      ASSERT_EQ(::DbOpen(table), 0);
      ::DbClearFieldBuffer(table);
      ::DbSetFieldData(table, 1, kLongName);
      ::DbSetFieldData(table, 2, "town");
      ::DbAccess(BtrOpInsert, table, 0);
      ASSERT_EQ(::DbAccess(BtrOpGetFirst, table, 0), 0);
    }
  }

  // Runs a call with its first, second, ... allocation failing until all succeed.
  void FailEach(const Call& call) {
    SCOPED_TRACE(call.name);
    FailEachInTurn([&](int failing) {
      call.prepare();
      messages_.Take();
      int32_t code = 0;
      const bool happened = FailsIn(failing, [&] { code = call.run(); });
      EXPECT_EQ(code, happened ? call.failure : call.success);
      EXPECT_EQ(messages_.Take(), happened ? call.shown : "");
      return happened;
    });
  }

  void FailEach(std::initializer_list<Call> calls) {
    for (const Call& call : calls) FailEach(call);
  }

  Company company_;
  std::string directory_ = company_.Directory();
  TextWindow form_;
  Boxes messages_;
  PlayedBtr btr_{"Db", &form_, directory_};
};

TEST_F(WithoutMemory, FlatFunctionsOfTheDictionary) {
  uint8_t version[5];
  const auto begin = [this] { Begin(); };
  const auto closed = [this] {
    Begin();
    ::DbClose(kPeople);
  };
  FailEach({
      {"DbInitialize", [&] { return ::DbInitialize(directory_.c_str()); }, 0, 65535, "", begin},
      {"DbTerminate", ::DbTerminate, 0, -1, "", begin},
      {"DbSetOwnerName", [] { return ::DbSetOwnerName(0, kLongName, 0); }},
      {"DbGetNumOfTable", ::DbGetNumOfTable, kTableCount, -1, "", begin},
      {"DbGetNumOfField", [] { return ::DbGetNumOfField(kPeople); }, 5},
      {"DbGetDataSize", [] { return ::DbGetDataSize(kPeople, 1); }, 20},
      {"DbGetDataType", [] { return ::DbGetDataType(kPeople, 1); }, kString},
      {"DbGetVersion", [&] { return ::DbGetVersion(version); }},
      {"DbOpen", [] { return ::DbOpen(kPeople); }, 0, -1, "VE001", closed},
      {"DbClose", [] { return ::DbClose(kPeople); }, 0, -1, "VE001", begin},
      {"DbCreate", [] { return ::DbCreate(kPeople); }, 0, -1, "VE001", closed},
  });
  TheSettings().delayed_resolve = 1;
  const auto listed = [&] { EXPECT_EQ(::DbInitialize(directory_.c_str()), 0); };
  FailEach({
      {"DbInitialize, deferred", [&] { return ::DbInitialize(directory_.c_str()); }, 0, 65535},
      {"DbOpen, deferred", [] { return ::DbOpen(kPeople); }, 0, -1, "VE001", listed},
      {"DbCreate, deferred", [] { return ::DbCreate(kPeople); }, 0, -1, "VE001", listed},
  });
}

TEST_F(WithoutMemory, AVariableTableThatDoesNotOpenKeepsARoom) {
  FailEach({"DbOpen", [] { return ::DbOpen(kNotes); }, 0, -1, "VE001",
            [this] {
              Begin();
              ::DbClose(kNotes);
            }});
  Begin();
}

TEST_F(WithoutMemory, FlatFunctionsOfRecords) {
  int32_t count = 0;
  uint16_t percentage = 0;
  const auto current = [] { ::DbAccess(BtrOpGetFirst, kPeople, kByCode); };
  FailEach({
      {"DbAccess", [] { return ::DbAccess(BtrOpGetFirst, kPeople, kByPlace); }},
      {"DbAccess, variable", [] { return ::DbAccess(BtrOpUpdate, kNotes, 0); }},
      {"DbGetNumOfRecords", [&] { return ::DbGetNumOfRecords(kPeople, &count); }},
      {"DbGetPosition", [] { return ::DbGetPosition(kPeople) > 0 ? 0 : -1; }},
      {"DbGetDirect", [] { return ::DbGetDirect(kPeople, ::DbGetPosition(kPeople), kByCode); }},
      {"DbGetByPercentage", [] { return ::DbGetByPercentage(kPeople, kByCode, 0); }},
      {"DbFindPercentage",
       [&] { return ::DbFindPercentage(kPeople, kByCode, ::DbGetPosition(kPeople), &percentage); }},
      {"DbUnlock", [] { return ::DbUnlock(kPeople, 0) == 81 ? 0 : -1; }},
      {"DbSetFieldData", [] { return ::DbSetFieldData(kPeople, 1, kLongName); }},
      {"DbClearFieldBuffer", [] { return ::DbClearFieldBuffer(kDays) == -3 ? 0 : -1; }},
      {"DbBeginTransaction", [] { return ::DbBeginTransaction(0); }},
      {"DbEndTransaction", ::DbEndTransaction},
      {"DbBeginConCurTransaction", [] { return ::DbBeginConCurTransaction(0); }},
      {"DbAbortTransaction", ::DbAbortTransaction},
      {"DbSetFormattedString", [] { return ::DbSetFormattedString(kLongName); }},
      {"DbExSetFormattedString", [] { return ::DbExSetFormattedString(kLongName); }},
  });
  current();
}

// The wide types have no length of their own: whatever the record holds is turned into text.
TEST_F(WithoutMemory, WideFieldsNeedNone) {
  OpenTable(kPeople)->Fields[1].Type = kWideString;
  OpenTable(kPeople)->Fields[2].Type = kWideZString;
  FailEach({
      {"written", [] { return ::DbSetFieldData(kPeople, 1, kLongName); }},
      {"read", [] { return TextCode(::DbGetFieldData(kPeople, 1)); }, 0, -2, ""},
      {"written, 26", [] { return ::DbSetFieldData(kPeople, 2, "wide"); }, 0, -1, "VE001",
       [] { OpenTable(kPeople)->Fields[1].Type = kString; }},
      {"read, 26", [] { return TextCode(::DbGetFieldData(kPeople, 2)); }, 0, -2, ""},
  });
}

TEST_F(WithoutMemory, TextsAreTheEmptyArea) {
  for (const auto& [fixed, unicode] : {std::pair{0, 1}, {0, 0}, {1, 1}}) {
    TheSettings().fix_str_addr = fixed;
    TheSettings().v1fx_unicode = unicode;
    const int32_t success = fixed != 0 ? -2 : 0;
    FailEach({
        {"DbGetFieldData", [] { return TextCode(::DbGetFieldData(kPeople, 1)); }, success, -2, ""},
        {"DbGetFieldName", [] { return TextCode(::DbGetFieldName(kPeople, 1)); }, success, -2, ""},
        {"DbGetTableName", [] { return TextCode(::DbGetTableName(kPeople)); }, success, -2, ""},
    });
  }
  TheSettings().fix_str_addr = 0;
  TheSettings().v1fx_unicode = 1;
}

TEST_F(WithoutMemory, ExtendedOperations) {
  int16_t result = -1, count = 0;
  const auto access = [&](const char* condition, const char* fields) {
    return ::DbExAccess(36, kPeople, condition, fields, kByCode, 0, 1, 0, &result, &count);
  };
  const auto free = [&] { ::DbExFree(result); };
  // What the condition or the fields lack is told with their own code.
  for (const auto& [condition, fields, codes] :
       {std::tuple{"@Code >= 0 & @Town = 'x'", "Code,Name,Town,Born,Pay", "-8 -9 -99"},
        {"", "Name", "-9 -99"}}) {
    std::string met;
    FailEachInTurn([&](int failing) {
      messages_.Take();
      int32_t code = 0;
      if (!FailsIn(failing, [&] { code = access(condition, fields); })) return false;
      EXPECT_EQ(messages_.Take(), "VE001");
      const std::string text = std::to_string(code);
      if (!met.ends_with(text)) met += (met.empty() ? "" : " ") + text;
      return true;
    });
    EXPECT_EQ(met, codes);
    free();
  }
  EXPECT_EQ(access("", "Name"), 0);
  FailEach({
      {"DbExGetFieldData", [&] { return TextCode(::DbExGetFieldData(result, 1, 0)); }, 0, -2, ""},
      {"DbExGetPosition", [&] { return ::DbExGetPosition(result, 0) > 0 ? 0 : -1; }},
  });
  FailEach({"DbExFree", [&] { return ::DbExFree(result); }});
}

TEST_F(WithoutMemory, FormsByPlainCode) {
  PlayedEdit edit({"edtName", &form_, "People", "Name"});
  const auto attached = [this] {
    TheFlatState() = DbFlatState{};
    EXPECT_EQ(::DbAttachControlByHwnd("Db", &form_), 0);
  };
  const auto detached = [] { TheFlatState() = DbFlatState{}; };
  EXPECT_EQ(btr_.DbOpen("People"), 0);
  btr_.formName = kLongName;
  btr_.formWindow = &form_;
  ::DbTerminate();
  FailEach({
      {"DbAttachControl", [] { return ::DbAttachControl("db", kLongName); }, 0, -1, "VE001",
       detached},
      {"DbAttachControlByHwnd", [&] { return ::DbAttachControlByHwnd("db", &form_); }, 0, -1,
       "VE001", detached},
      {"DbTransferToControl", [] { return ::DbTransferToControl(kPeople); }, 0, -1, "VE001",
       attached},
      {"DbTransferFromControl", [] { return ::DbTransferFromControl(kPeople); }, 0, -1, "VE001",
       attached},
      {"DbClearControlData", [] { return ::DbClearControlData(kPeople); }, 0, -1, "VE001",
       attached},
  });
  detached();
}

TEST_F(WithoutMemory, AClickAScrollAndAFill) {
  DbEngine& engine = TheEngine();
  Button people(kPeople), notes(kNotes);
  List list;
  ExFill fill;
  fill.DbListFields = "Name,Code";
  fill.DbConditions = "@Code >= 0";
  fill.DbLeaveResults = true;
  const auto first = [] { ::DbAccess(BtrOpGetFirst, kPeople, kByCode); };
  const auto unsaid = [&] { TheExResults().Clear(); };
  FailEach({
      {"insert", [&] { return DbButtonInsert(engine, people, false); }},
      {"read", [&] { return DbButtonRead(engine, BtrOpGetEqual, people); }},
      {"next", [&] { return DbButtonRead(engine, BtrOpGetNext, people); }, 0, -1, "VE001", first},
      {"update", [&] { return DbButtonUpdate(engine, people, false); }, 0, -1, "VE001",
       [&] { EXPECT_EQ(DbButtonRead(engine, BtrOpGetEqual, people), 0); }},
      {"step", [&] { return DbButtonStep(engine, BtrOpStepFirst, people); }},
      {"scroll", [&] { return DbScrollCall(engine, BtrOpGetFirst, people); }},
      {"delete", [&] { return DbButtonDelete(engine, people); }},
      {"read, variable", [&] { return DbButtonRead(engine, BtrOpGetFirst, notes); }, 0, -1, "VE001",
       [&] { notes.Table()->BufferSize = notes.Table()->RecordLength; }},
      {"fill", [&] { return DbFillList(engine, list, "Name", kByCode); }},
  });
  // The list was emptied or it was not: both are ends of a fill.
  FailEachInTurn([&](int failing) {
    unsaid();
    messages_.Take();
    const bool happened = FailsIn(failing, [&] { FillFromExtended(engine, fill, list); });
    EXPECT_EQ(messages_.Take(), happened ? "VE001" : "");
    return happened;
  });
  unsaid();
}

TEST_F(WithoutMemory, TheHeapCheckTellsOfABadHeapWithoutUsingIt) {
  ReplaceValidateHeap([] { return kHeapBadNode; });
  static std::string shown;
  shown.reserve(600);
  ReplaceShowBox([](const char* text, unsigned) {
    shown = text;
    return 5;
  });
  int answer = 0;
  const char* status = nullptr;
  {
    const FailingMemory none(0);
    answer = CheckHeap(TheSettings(), "file.c", 12);
    status = DbStatusText(4);
    EXPECT_FALSE(none.Happened());
  }
  ReplaceValidateHeap(nullptr);
  EXPECT_EQ(answer, 5);
  EXPECT_EQ(CodePageToUtf8(status), "該当レコ－ドがみつかりません。");
  EXPECT_EQ(CodePageToUtf8(shown), "far heap err,ヒープの中に異常ノードがあります。file.c,12");
}

}  // namespace
}  // namespace qrn::test
