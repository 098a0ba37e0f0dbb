// A grid whose fill, edit or deletion finds no memory at its first, second, ... allocation: VE001
// comes of it, rows stand for their own records, and the operation works again afterwards.
#include <gtest/gtest.h>

#include "FailingMemory.h"
#include "binding/registry/ControlRegistry.h"
#include "core/DbEngine.h"
#include "core/FillTurn.h"
#include "core/FlatState.h"
#include "core/Gateway.h"
#include "core/Record.h"
#include "core/RecordPlace.h"
#include "platform/MessageBox.h"
#include "qrnbt350.h"
#include "tests/grid/PlayedGrid.h"

namespace qrn::test {
namespace {

constexpr int kPeopleShown = 3;
constexpr char kLong[] = "a name too long for a string's own room";

DbTableInfo* People() {
  DbDictionary* dictionary = TheFlatState().CurrentDictionary;
  return dictionary != nullptr ? &dictionary->Tables[kPeople] : nullptr;
}

std::string shownCodes;

struct GridWithoutMemory : ::testing::Test {
  GridWithoutMemory() {
    ReplaceShowBox([](const char* text, unsigned) {
      const NotCounted own;
      shownCodes += std::string(text, 5) + " ";
      return kBoxOk;
    });
    EXPECT_EQ(::DbInitialize(company_.Directory().c_str()), 0);
    EXPECT_EQ(::DbOpen(kPeople), 0);
    for (const char* code : {"1", "2", "3"}) Insert(code);
    grid_.names = {.source = "Db",
                   .table = "People",
                   .index = "ByCode",
                   .fields = "Code,Name",
                   .conditions = ""};
    grid_.findTable = [](const GridNames&) { return People(); };
    grid_.model.AllowUpdate = grid_.model.AllowDelete = -1;
    grid_.model.Create();
  }
  ~GridWithoutMemory() override {
    ::DbTerminate();
    TheFlatState() = DbFlatState{};
    ReplaceShowBox(nullptr);
  }

  void Insert(const char* code) {
    ::DbClearFieldBuffer(kPeople);
    ::DbSetFieldData(kPeople, 0, code);
    ::DbSetFieldData(kPeople, 1, "somebody");
    ::DbAccess(BtrOpInsert, kPeople, 0);
  }

  // Every row with a position shows that record's code, or nothing.
  void CheckRows() {
    DbTableInfo& table = *People();
    for (size_t index = 0; index < grid_.model.positions.Size(); ++index) {
      const std::string code = grid_.Cell(static_cast<int64_t>(index) + grid_.model.FixedRows, 1);
      const int32_t position = grid_.model.positions.Get(index);
      if (code.empty() || DbReadWholeAt(table, position, -1) != 0) continue;
      EXPECT_EQ(code, DbReadFieldByName(TheEngine(), table, "Code"));
    }
  }

  // Runs `work` with one allocation after another failing until all succeed.
  template <class Prepare, class Work>
  void FailEach(Prepare prepare, Work work) {
    FailEachInTurn([&](int failing) {
      prepare();
      shownCodes.clear();
      const bool happened = FailsIn(failing, work);
      EXPECT_EQ(shownCodes, happened ? "VE001 " : "");
      EXPECT_FALSE(FillTurn::IsTaken());
      CheckRows();
      return happened;
    });
  }

  ControlRegistry& registry_ = TheRegistry();  // the process's settings, before its engine
  Company company_;
  PlayedGrid grid_{{.maxRows = 10, .maxCols = 4}, &TheEngine()};
};

TEST_F(GridWithoutMemory, FillsAgain) {
  FailEach([] {}, [this] { grid_.data.ReloadList(); });
  EXPECT_EQ(grid_.model.Rows, kPeopleShown + 1);
  EXPECT_EQ(grid_.Cells(1, 1, 3, 2), "1|somebody/2|somebody/3|somebody");
}

TEST_F(GridWithoutMemory, WritesItsRowAgain) {
  const auto type = [this] {
    grid_.data.ReloadList();
    grid_.Type(2, 2, grid_.Cell(2, 2) == kLong ? "x" : kLong);
  };
  FailEach(type, [this] {
    grid_.data.CommitCell();
    grid_.data.CommitRow(2);
  });
  EXPECT_EQ(grid_.Cell(2, 2).substr(0, 1), Utf8ToCodePage(grid_.edit).substr(0, 1));
}

TEST_F(GridWithoutMemory, DeletesAgain) {
  const auto fill = [this] {
    Insert("2");
    grid_.data.ReloadList();
    grid_.model.Row = 2;
    grid_.model.rowSelected = 1;
  };
  FailEach(fill, [this] { grid_.data.DeleteCurrentRow(); });
  EXPECT_EQ(grid_.Cells(1, 1, 3, 1), "1/3/");
}

}  // namespace
}  // namespace qrn::test
