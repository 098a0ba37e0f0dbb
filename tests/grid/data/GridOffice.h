// A played grid over the tables of a small database on disk.
#pragma once

#include "core/Table.h"
#include "tests/bound/Office.h"
#include "tests/grid/PlayedGrid.h"

namespace qrn::test {

// The grid is to show Code and Name of "People" by their code; it is not filled yet.
struct GridOffice : ::testing::Test {
  explicit GridOffice(GridCapacity capacity = {.maxRows = 20, .maxCols = 8})
      : grid_(capacity, &office_.engine) {
    grid_.names = {.source = "Db",
                   .table = "People",
                   .index = "ByCode",
                   .fields = "Code,Name",
                   .conditions = ""};
    grid_.findTable = [this](const GridNames& names) {
      return names.table.empty() ? nullptr : office_.Table(names.table.c_str());
    };
    grid_.openTable = [this](DbTableInfo& table) {
      return DbOpenOrCreate(office_.engine, table, office_.Directory(), "", 0) == 0;
    };
    grid_.model.Create();
  }

  void OpenPeople() {
    DbTableInfo& people = *office_.Table("People");
    if (people.IsOpen == 0) grid_.openTable(people);
  }

  // Records of People: code, name, the town "Nara".
  void Insert(std::initializer_list<std::pair<const char*, const char*>> people) {
    for (const auto& [code, name] : people) {
      form_.texts = {{"Code", code}, {"Name", name}, {"Town", "Nara"}};
      ASSERT_EQ(DbButtonInsert(office_.engine, button_, false), 0);
    }
  }
  void InsertThree() { Insert({{"3", "さくら"}, {"1", "うめ"}, {"2", "もも"}}); }
  void InsertMany(int count) {
    for (int code = 1; code <= count; ++code) Insert({{std::to_string(code).c_str(), "x"}});
  }

  // Goes to a record as a button does; the form shows it then.
  Status GoTo(const char* code) {
    form_.texts = {{"Code", code}, {"Name", ""}, {"Town", ""}};
    return DbButtonRead(office_.engine, BtrOpGetEqual, button_);
  }
  // "うめ,Nara", of the record as it is stored.
  std::string Stored(const char* code) {
    const Status status = GoTo(code);
    if (status != 0) return "status " + std::to_string(status);
    return form_.texts["Name"] + "," + form_.texts["Town"];
  }
  // The code of the table's current record, as the buffer has it.
  std::string Current() { return office_.Field("People", "Code"); }

  // Fills and gives what became of it.
  std::string Fill() {
    grid_.data.ReloadList();
    return grid_.TakeLog();
  }
  // Leaves the cell and then the row, as the arrow keys do.
  std::string Leave(int32_t row) {
    grid_.data.CommitCell();
    grid_.data.CommitRow(row);
    grid_.model.editActive = 0;
    return grid_.TakeLog();
  }
  std::string TypeAndLeave(int32_t row, int32_t col, const std::string& text) {
    grid_.Type(row, col, text);
    return Leave(row);
  }
  std::string Delete(int32_t row) {
    grid_.model.Row = row;
    grid_.model.rowSelected = 1;
    grid_.data.DeleteCurrentRow();
    return grid_.TakeLog();
  }
  size_t Positions() const { return grid_.model.positions.Size(); }

  Messages messages_;
  Office office_;
  PlayedForm form_;
  PlayedButton button_{office_, form_, "People"};
  PlayedGrid grid_;
};

}  // namespace qrn::test
