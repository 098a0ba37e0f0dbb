// DbExAccess and its companions, as a flat caller meets them.

#include "core/FlatState.h"
#include "extended/ExResultStore.h"
#include "extended/ExecuteExtended.h"
#include "platform/Bstr.h"
#include "platform/Memory.h"
#include "qrnbt350.h"
#include "tests/extended/Replies.h"
#include "tests/extended/ScriptedManager.h"
#include "tests/extended/TestTable.h"

namespace qrn::test {
namespace {

const std::vector<uint8_t> kTwoRecords =
    Reply({{16, {'A', 'b', 'e', ' ', 1, 0}}, {32, {0x95, 0x5C, ' ', ' ', 2, 0}}});

struct ExAccessCall : testing::Test {
  ExAccessCall() {
    tables_[0] = table_.Info();
    tables_[0].IsOpen = 1;
    dictionary_.Tables = tables_.data();
    dictionary_.TableCount = 1;
    TheFlatState().CurrentDictionary = &dictionary_;
  }
  ~ExAccessCall() override {
    TheFlatState().CurrentDictionary = nullptr;
    TheSettings().fix_str_addr = 0;
    static_cast<void>(DbExSetMode(TheEngine(), "UC"));
    TheExResults().Clear();
  }

  int32_t Access(int16_t operation, const char* condition = "", const char* fields = "Name,Code",
                 int16_t key = 0, int16_t tableId = 0) {
    id_ = count_ = 99;
    return ::DbExAccess(operation, tableId, condition, fields, key, 7, 5, 0, &id_, &count_);
  }

  // Status, id and count.
  std::string Outcome(int32_t status) const {
    return std::to_string(status) + " " + std::to_string(id_) + " " + std::to_string(count_);
  }

  // The bytes of a string of automation, which is freed.
  static std::string Bytes(void* text) {
    auto* bstr = static_cast<BstrText>(text);
    std::string bytes(reinterpret_cast<const char*>(bstr), BstrByteLength(bstr));
    FreeBstr(bstr);
    return bytes;
  }

  ShownMessages messages_;
  ScriptedManager manager_;
  TestTable table_{{{"Code", kInteger, 2}, {"Name", kString, 4}}, {{{1, 0}}, {{0}}}};
  std::array<DbTableInfo, 2> tables_{};
  DbDictionary dictionary_{};
  int16_t id_ = 0;
  int16_t count_ = 0;
};

TEST_F(ExAccessCall, KeepsTheReplyAndGivesItsNumberAndItsRecords) {
  manager_.batches = {{0, kTwoRecords}};
  EXPECT_EQ(Outcome(Access(36, "@0 > 0")), "0 0 2");
  EXPECT_EQ(manager_.TakeLog(), "36UC:k0");
  EXPECT_EQ(Hex(manager_.request).substr(0, 30 * 3),
            " 1D 00 55 43 07 00 01 00 01 02 00 00 00 02 00 00 00"
            " 05 00 02 00 04 00 02 00 02 00 00 00 00");
  EXPECT_EQ(manager_.request.size(), (6u + 6) * 5 + 2);
  EXPECT_EQ(Bytes(::DbExGetFieldData(0, 1, 0)), "Abe");
  EXPECT_EQ(Bytes(::DbExGetFieldData(0, 0, 1)), "2");
  EXPECT_EQ(::DbExGetPosition(0, 1), 32);
  EXPECT_EQ(::DbExGetPosition(0, 2), -1);
  EXPECT_EQ(::DbExFree(0), 0);
  EXPECT_EQ(::DbExFree(0), -1);
  EXPECT_EQ(::DbExGetPosition(0, 1), -1);
}

TEST_F(ExAccessCall, TakesTwentyOperations) {
  for (int operation = -500; operation < 700; ++operation) {
    const bool taken =
        operation >= 0 && operation < 500 && operation % 100 >= 36 && operation % 100 <= 39;
    EXPECT_EQ(Access(static_cast<int16_t>(operation)), taken ? 9 : -7) << operation;
    EXPECT_EQ(messages_.Take(), taken
                                    ? ""
                                    : "VE044 このオペレーション・コード " +
                                          std::to_string(operation) + " は使用可能ではありません");
    TheExResults().Clear();
  }
}

TEST_F(ExAccessCall, FailsWithTheCodeOfTheFault) {
  const struct {
    const char* what;
    int32_t result;
    const char *expected, *message;
  } cases[] = {
      {"a table id past the count", Access(36, "", "Code", 0, 2), "-15", ""},
      {"a negative table id", Access(36, "", "Code", 0, -1), "-15", ""},
      {"an empty slot", Access(36, "", "Code", 0, 1), "-3", ""},
  };
  for (const auto& [what, result, expected, message] : cases) {
    EXPECT_EQ(std::to_string(result), expected) << what;
    EXPECT_EQ(messages_.TakeCodes(), message) << what;
  }
  EXPECT_EQ(Access(36, "Code = 1"), -8);
  EXPECT_EQ(Access(36, "", "Code, Name"), -9);
  EXPECT_EQ(Access(36, "", nullptr), -9);
  EXPECT_EQ(Access(36, "", "Code", 3), -6);
  EXPECT_EQ(messages_.TakeCodes(), "VE041 VE818 VE040 VE804");
  tables_[0].IsOpen = 0;
  EXPECT_EQ(Access(36), -3);
  TheFlatState().CurrentDictionary = nullptr;
  EXPECT_EQ(Access(36), -12);
  EXPECT_EQ(messages_.Take() + manager_.TakeLog(), "");
}

TEST_F(ExAccessCall, WithoutMemoryItIsMinus99) {
  ReplaceAllocate([](size_t) -> void* { return nullptr; });
  const int32_t result = Access(36);
  ReplaceAllocate(nullptr);
  EXPECT_EQ(Outcome(result), "-99 99 99");
  EXPECT_EQ(messages_.TakeCodes() + manager_.TakeLog(), "VE001");
}

TEST_F(ExAccessCall, The49thResultIsNotKept) {
  for (int16_t i = 0; i < 48; ++i) {
    manager_.batches = {{0, kTwoRecords}};
    EXPECT_EQ(Outcome(Access(36)), "0 " + std::to_string(i) + " 2");
  }
  manager_.batches = {{0, kTwoRecords}};
  EXPECT_EQ(Outcome(Access(36)), "0 99 99");
  ::DbExFree(17);
  manager_.batches = {{0, kTwoRecords}};
  EXPECT_EQ(Outcome(Access(36)), "0 17 2");
}

TEST_F(ExAccessCall, TextIsBytesUnlessTheSettingsFixItsPlace) {
  manager_.batches = {{0, kTwoRecords}};
  Access(36);
  EXPECT_EQ(Bytes(::DbExGetFieldData(0, 1, 1)), "\x95\x5C");
  EXPECT_EQ(Bytes(::DbExGetFieldData(0, 1, 2)), "") << "past the end";
  EXPECT_EQ(Bytes(::DbExGetFieldData(0, 7, 0)), "") << "no such field";
  EXPECT_EQ(::DbExGetFieldData(1, 0, 0), nullptr);
  EXPECT_EQ(::DbExGetFieldData(48, 0, 0), nullptr);
  TheSettings().fix_str_addr = 1;
  EXPECT_STREQ(static_cast<char*>(::DbExGetFieldData(0, 1, 0)), "Abe");
  EXPECT_EQ(::DbExGetFieldData(0, 1, 0), TheFlatState().ReturnText);
  EXPECT_EQ(TheFlatState().ReturnLength, 3);
  EXPECT_STREQ(static_cast<char*>(::DbExGetFieldData(0, 1, 9)), "");
  EXPECT_EQ(::DbExGetFieldData(-1, 0, 0), nullptr);
}

TEST_F(ExAccessCall, ModeIsTheSignatureOfAllThatFollows) {
  EXPECT_EQ(DbExSetMode(TheEngine(), "EG"), 0);
  Access(36);
  for (const char* bad : {"", "U", "UCX"}) EXPECT_EQ(DbExSetMode(TheEngine(), bad), -1) << bad;
  EXPECT_EQ(DbExSetMode(TheEngine(), nullptr), -1);
  Access(36);
  EXPECT_EQ(DbExSetMode(TheEngine(), "zz"), 0);
  Access(36);
  EXPECT_EQ(manager_.TakeLog(), "36EG:k0 36EG:k0 36zz:k0");
}

TEST_F(ExAccessCall, AKeyByItsName) {
  const auto access = [&](int32_t operation, const char* name, const char* condition = "",
                          const char* fields = "Code") {
    ExAccess request;
    request.Operation = operation;
    request.SearchCond = condition;
    request.Fields = fields;
    ExAccessResult result{};
    return ExecuteExtendedByName(TheEngine(), tables_[0], request, name, result);
  };
  EXPECT_EQ(access(36, "Name"), 9);
  EXPECT_EQ(access(36, "Code"), 9);
  EXPECT_EQ(access(36, "None"), -6);
  EXPECT_EQ(access(37, ""), -6);
  EXPECT_EQ(access(38, "None"), -6);
  EXPECT_EQ(access(138, ""), 9);
  EXPECT_EQ(access(239, nullptr), 9);
  EXPECT_EQ(access(40, ""), -7);
  EXPECT_EQ(manager_.TakeLog(), "36UC:k0 36UC:k1 138UC:k255 239UC:k255");
  EXPECT_EQ(messages_.TakeCodes(), "VE044");
  // Where all is wrong the operation is told first and the key last.
  EXPECT_EQ(access(40, "None", "x", ""), -7);
  EXPECT_EQ(access(36, "None", "x", ""), -8);
  EXPECT_EQ(access(36, "None", "", ""), -9);
  EXPECT_EQ(access(36, "None"), -6);
  EXPECT_EQ(messages_.TakeCodes(), "VE044 VE041 VE040");
  EXPECT_EQ(manager_.TakeLog(), "");
}

}  // namespace
}  // namespace qrn::test
