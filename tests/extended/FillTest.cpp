// The fill's course against a record manager that says anything.

#include "platform/Memory.h"
#include "tests/extended/FillFixture.h"

namespace qrn::test {
namespace {

class Fill : public FillFixture {};

TEST_F(Fill, EachOperationHasItsStartItsKeyAndItsLock) {
  const struct {
    int32_t operation, locks;
    const char* log;
  } cases[] = {
      {OpGetPrevEx, 0, "22 13:k1 37UC:k1 23@77:k1"},
      {OpGetNextEx, 0, "22 12:k1 36UC:k1 23@77:k1"},
      {OpStepPrevEx, 0, "22 34 39UC 23@77:k1"},
      {OpStepNextEx, 0, "22 33 38UC 23@77:k1"},
      {OpGetNextEx, 1, "22 12:k1 136UC:k1 23@77:k1"},
      {OpStepNextEx, 2, "22 33 238UC 23@77:k1"},
      {OpStepPrevEx, 3, "22 34 339UC 23@77:k1"},
      {OpGetPrevEx, 4, "22 13:k1 437UC:k1 23@77:k1"},
      {OpGetPrevEx, 5, "22 13:k1 37UC:k1 23@77:k1"},
  };
  fill_.ListIndexId = 2;
  for (const auto& [operation, locks, log] : cases) {
    fill_.DbExOperation = operation;
    fill_.DbLocks = locks;
    Run();
    EXPECT_EQ(manager_.TakeLog(), log);
  }
}

TEST_F(Fill, RefusesAnOperationThatIsNone) {
  for (const int32_t operation : {-1, 4, 36}) {
    fill_.DbExOperation = operation;
    EXPECT_FALSE(Run());
  }
  EXPECT_EQ(messages_.TakeCodes(), "VE044 VE044 VE044");
  EXPECT_EQ(list_.TakeLog() + manager_.TakeLog(), "");
}

TEST_F(Fill, SendsCountsAsTheyStand) {
  fill_.DbSkipRecords = 300;
  fill_.DbMaxRecords = 0;
  Run();
  EXPECT_EQ(manager_.request[4] + manager_.request[5] * 256, 300);
  EXPECT_EQ(manager_.request[8] + manager_.request[9] * 256, 0);
}

TEST_F(Fill, JoinsFieldsAsTheKindOfListDoes) {
  const struct {
    FillKind kind;
    const char *delimiter, *row;
  } cases[] = {
      {FillKind::ComboBox, nullptr, "[Abe 1]"}, {FillKind::ComboBox, "", "[Abe 1]"},
      {FillKind::ComboBox, "; ", "[Abe; 1]"},   {FillKind::ListBox, "", "[Abe 1]"},
      {FillKind::ListBox, "72,90", "[Abe\t1]"}, {FillKind::Grid, "", "[Abe\t1]"},
      {FillKind::Grid, "; ", "[Abe\t1]"},
  };
  for (const auto& [kind, delimiter, row] : cases) {
    manager_.batches = {{9, Names({"Abe"})}};
    fill_.Delimiter = delimiter;
    EXPECT_EQ(Log(kind), std::string("empty(2) ") + row);
  }
}

// How lists and the grid take the statuses that bring records. Three batches stand ready: the rows
// of the first one, and whether the others came too.
TEST_F(Fill, ListsEndAtALimitAndTheGridReadsOn) {
  const struct {
    Status status;
    const char *list, *grid;
  } cases[] = {
      {0, "[a 1] [b 1] [c 1] kept 2", "[a 1] [b 1] [c 1] kept 2"},
      {9, "[a 1] kept 0", "[a 1] kept 0"},
      {22, "[a 1] error(Orders,22) kept 0", "[a 1] [b 1] [c 1] kept 2"},
      {60, "[a 1] error(Orders,60) kept 0", "[a 1] [b 1] [c 1] kept 2"},
      {64, "[a 1] error(Orders,64) kept 0", "[a 1] [b 1] [c 1] kept 2"},
      {65, "[a 1] error(Orders,65) kept 0", "[a 1] [b 1] [c 1] kept 2"},
  };
  fill_.DbLeaveResults = true;
  fill_.DbListFields = "Name,Code";
  const auto run = [&](FillKind kind, Status status) {
    manager_.batches = {{status, Names({"a"})}, {0, Names({"b"})}, {9, Names({"c"})}};
    list_.resultId = kNoResult;
    std::string log = Log(kind).substr(sizeof "empty(2)");
    const ExResultSlot* slot = TheExResults().Find(list_.resultId);
    if (slot != nullptr) log.erase(log.find(" result(0)"), sizeof " result(0)" - 1);
    log += " kept " + std::to_string(slot != nullptr ? slot->Records.size() : 0);
    TheExResults().Clear();
    for (char& byte : log) {
      if (byte == '\t') byte = ' ';
    }
    return log;
  };
  for (const auto& [status, list, grid] : cases) {
    EXPECT_EQ(run(FillKind::ListBox, status), list) << status;
    EXPECT_EQ(run(FillKind::ComboBox, status), list) << status;
    EXPECT_EQ(run(FillKind::Grid, status), grid) << status;
  }
  EXPECT_EQ(messages_.Take(), "");
}

TEST_F(Fill, OtherStatusesShowTheirNumberAndEndTheReading) {
  for (const Status status : {1, 3, 7, 8, 20, 61, 62, 84, 85}) {
    manager_.batches = {{0, Names({"Abe"})}, {status, {}}};
    EXPECT_TRUE(Run());
    EXPECT_EQ(list_.TakeLog(), "empty(2) [Abe 1]");
    EXPECT_EQ(messages_.Take(), "VE039 Extended Operationエラー(" + std::to_string(status) + ")");
    EXPECT_EQ(manager_.TakeLog(), "22 12:k0 36UC:k0 36EG:k0 23@77:k0");
  }
}

TEST_F(Fill, ABatchThatCannotGetAnyFurtherIsTheLast) {
  for (const FillKind kind : {FillKind::ListBox, FillKind::Grid}) {
    for (const Status status : {0, 22, 64}) {
      manager_.batches = {{status, {0, 0}}, {0, Names({"never"})}};
      const bool event = kind == FillKind::ListBox && status != 0;
      EXPECT_EQ(Log(kind), event ? "empty(2) error(Orders," + std::to_string(status) + ")"
                                 : std::string("empty(2)"));
    }
  }
  for (const Status status : {60, 65}) {
    manager_.batches = {{status, {0, 0}}, {9, Names({"Abe"})}};
    EXPECT_EQ(Log(FillKind::Grid), "empty(2) [Abe\t1]") << status;
  }
}

TEST_F(Fill, AFirstRecordThatFailsLeavesTheListAlone) {
  for (const Status status : {9, 22, 84}) {
    manager_.firstStatuses = {status};
    EXPECT_FALSE(Run(FillKind::Grid));
    EXPECT_EQ(list_.TakeLog(), "error(Orders," + std::to_string(status) + ")");
    EXPECT_EQ(manager_.TakeLog(), "22 12:k0 23@77:k0");
  }
  EXPECT_EQ(messages_.Take(), "");
}

TEST_F(Fill, AFaultInItsTextsLeavesTheListAlone) {
  const struct {
    const char *conditions, *fields, *message;
  } cases[] = {
      {"Code = 1", "Name", "VE041"}, {"@9 = 1", "Name", "VE025"},
      {"", "Name, Code", "VE818"},   {"", "", "VE040"},
      {nullptr, nullptr, "VE040"},
  };
  for (const auto& [conditions, fields, message] : cases) {
    fill_.DbConditions = conditions;
    fill_.DbListFields = fields;
    EXPECT_FALSE(Run());
    EXPECT_EQ(messages_.TakeCodes(), message);
    EXPECT_EQ(list_.TakeLog(), "");
    EXPECT_EQ(manager_.TakeLog(), "22 12:k0 23@77:k0");
  }
}

TEST_F(Fill, WithoutATableNothingHappens) {
  table_.Info().IsOpen = 0;
  EXPECT_FALSE(Run());
  list_.table = nullptr;
  EXPECT_FALSE(Run());
  EXPECT_EQ(manager_.TakeLog() + list_.TakeLog() + messages_.Take(), "");
}

TEST_F(Fill, ARecordThatTheKeyLeavesOutIsGoneBackToWithoutIt) {
  manager_.directStatuses = {44};
  Run();
  EXPECT_EQ(manager_.TakeLog(), "22 12:k0 36UC:k0 23@77:k0 23@77:k255");
}

TEST_F(Fill, ARecordTooLongForTheBufferIsGoneBackToWithALongerOne) {
  table_.Info().IsVariable = 1;
  table_.Info().BufferSize = table_.Info().RecordLength;
  manager_.directStatuses = {22};
  Run();
  EXPECT_EQ(manager_.TakeLog(), "22 12:k0 36UC:k0 23@77:k0 23@77:k0");
  EXPECT_EQ(manager_.length, 6u + 64512) << "all of the buffer";
}

TEST_F(Fill, EmptiesTheRecordFirst) {
  table_.MakeBuffer("Abe.....");
  table_.Info().IsOpen = 1;
  manager_.firstStatuses = {9};
  manager_.position = -1;
  Run();
  EXPECT_EQ(std::string(reinterpret_cast<char*>(table_.Info().RecordBuffer), 7),
            std::string(7, '\0'));
}

TEST_F(Fill, ALongFirstRecordGetsALongerBuffer) {
  table_.Info().IsVariable = 1;
  table_.Info().BufferSize = table_.Info().RecordLength;
  manager_.firstStatuses = {22};
  manager_.batches = {{9, Names({"Abe"})}};
  EXPECT_EQ(Log(), "empty(2) [Abe 1]");
  EXPECT_EQ(manager_.TakeLog(), "22 12:k0 12:k0 36UC:k0 23@77:k0");
  EXPECT_EQ(table_.Info().BufferSize, 6 + 64512);
  EXPECT_GE(table_.Info().BufferAllocated, size_t{6 + 64512});
}

TEST_F(Fill, WithoutMemoryForTheReplyTheListIsLeftAlone) {
  ReplaceAllocate([](size_t) -> void* { return nullptr; });
  EXPECT_FALSE(Run());
  ReplaceAllocate(nullptr);
  EXPECT_EQ(list_.TakeLog(), "");
  EXPECT_EQ(messages_.Take().substr(0, 30), "VE001 メモリ不足  qrnDbEx");
}

}  // namespace
}  // namespace qrn::test
