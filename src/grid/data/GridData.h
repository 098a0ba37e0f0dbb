// A grid's records: how its cells are filled from a table, and how what the user changed goes back.
// The operations look their table up by name, raise the events and show the messages; the screen
// decides when they run.
//
// Handlers run in all of them and may do anything but end the control itself, which the caller
// keeps alive (GridHost.h). No operation throws: without memory VE001 is shown and it ends.
//
// A handler that shows a box takes the focus from the grid, whose screen then commits. While any of
// these is under way CommitCell, CommitRow and DeleteCurrentRow therefore do nothing; a row that is
// left so stays changed until it is left again.
#pragma once

#include "core/DbEngine.h"
#include "grid/model/GridModel.h"

namespace qrn {

class GridData {
 public:
  GridData(GridModel& model, DbEngine& engine) noexcept : model_(model), engine_(engine) {}

  // Fills the cells with the records of the table anew: `Refresh`, `Reload`, a window made with
  // `DbUpdateOption` 1, a database control that is ready. Nothing happens in a designer, without a
  // window, where the names lead to no table, and while a fill of any list or grid is under way.
  // Where the first record cannot be read the cells stay as they were.
  void ReloadList() noexcept;

  // Takes the edit box's text into the current cell, unless nothing was changed in it or a handler
  // of `BeforeColUpdate` cancels. Raises events and repaints the cell.
  void CommitCell() noexcept;

  // Writes a row whose cells the user changed back to its record, unless a handler of
  // `BeforeUpdate` cancels. `row` is the row that is left, not the one gone to. The table's current
  // record is the same before and after.
  void CommitRow(int32_t row) noexcept;

  // Deletes the record of the current row, if its header is selected, and moves the rows below up.
  // The record of the new current row is the table's current one then.
  void DeleteCurrentRow() noexcept;

 private:
  template <class Work>
  void Run(Work work) noexcept;
  void TakeEditText();

  GridModel& model_;
  DbEngine& engine_;
  bool underWay_ = false;
};

}  // namespace qrn
