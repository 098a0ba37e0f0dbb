// A grid without a window: a model over a host that offers nothing, and a screen that writes down
// what the rules ask of it.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "grid/layout/GridScreen.h"

namespace qrn::test {

// In place at run time, with no data behind it.
class QuietHost : public GridHost {
 public:
  WindowHandle Window() const override { return nullptr; }
  bool IsInPlace() const override { return true; }
  bool IsRunTime() const override { return true; }
  GridNames Names() override { return {}; }
  DbTableInfo* FindTable(const GridNames&) override { return nullptr; }
  bool OpenTable(DbTableInfo&, const GridNames&) override { return false; }
  std::optional<std::string> FormatCell(std::string_view, std::string_view) override { return {}; }
  std::string EditText() override { return {}; }
  int32_t NameWidthPx(std::string_view) override { return 1; }
  void RepaintCurrentCell() override {}
  void Repaint() override {}
  void ShowFilled() override {}
  void RaiseFormat(std::u16string&) override {}
  Status RaiseBtrieveError(std::string_view, Status status) override { return status; }
  bool RaiseBeforeColUpdate(const std::string&) override { return false; }
  bool RaiseBeforeUpdate() override { return false; }
  bool RaiseBeforeDelete() override { return false; }
  void Raise(GridEvent) override {}
};

// A model of that many rows and columns, one of each fixed: 20 pixels high, 50 wide.
class SizedModel : private QuietHost, public GridModel {
 public:
  SizedModel(int32_t rows, int32_t cols, GridCapacity capacity = {1024, 64})
      : GridModel(static_cast<QuietHost&>(*this), capacity) {
    GridModel::PutRows(rows);
    GridModel::PutCols(cols);
    Create();
  }
};

class PlayedScreen : public GridScreen {
 public:
  explicit PlayedScreen(GridModel& model) : model_(model) {}

  GridSize usable{200, 100};
  std::function<void(const std::string&)> onEvent;  // a handler of the application

  std::string Take() { return std::exchange(log_, {}); }

  GridSize UsableSize() const override { return usable; }
  void Repaint() override { Note("repaint"); }
  void ToggleFocus() override { Note("focus" + CurrentCell()); }
  void PaintSelected(int32_t row, int32_t col, int32_t otherRow, int32_t otherCol) override {
    Note("paint" + Pair(row, col) + "-" + Pair(otherRow, otherCol));
  }
  void InvertLine(GridDirection direction, int32_t place, int32_t length) override {
    Note("line" + Mark(direction) + std::to_string(place) + ":" + std::to_string(length));
  }
  void ShowResizeCursor(GridDirection direction) override { Note("cursor" + Mark(direction)); }
  void ShowPointer() override { Note("pointer"); }
  void PlaceEdit() override { Note("edit" + CurrentCell()); }
  void HideEdit() override { Note("hide"); }
  void LayOutBars() override { Note("bars"); }
  void ShowBarPosition(GridDirection direction) override {
    const bool across = direction == GridDirection::Horizontal;
    Note("bar" + Mark(direction) + std::to_string(across ? model_.hScrollPos : model_.vScrollPos));
  }
  void CommitCell() override { Event("cell"); }
  void CommitRow(int32_t row) override { Event("row" + std::to_string(row)); }
  void DeleteCurrentRow() override { Event("delete"); }
  void RaiseChange() override { Event("Change"); }
  void RaiseSelChange() override { Event("SelChange"); }

 protected:
  virtual void Note(const std::string& what) { log_ += what + " "; }

 private:
  static std::string Mark(GridDirection direction) {
    return direction == GridDirection::Horizontal ? "|" : "-";
  }
  static std::string Pair(int32_t row, int32_t col) {
    return "(" + std::to_string(row) + "," + std::to_string(col) + ")";
  }
  std::string CurrentCell() const { return Pair(model_.Row, model_.Col); }
  void Event(const std::string& what) {
    Note(what);
    if (onEvent) onEvent(what);
  }

  GridModel& model_;
  std::string log_;
};

}  // namespace qrn::test
