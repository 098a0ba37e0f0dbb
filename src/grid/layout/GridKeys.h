// Keys that move a grid's current cell. The edit box, where there is one, has the keyboard and
// leaves the cell at its text's ends alone; without one, and while it is hidden, the grid's own
// window has it.
#pragma once

#include "grid/layout/GridScreen.h"
#include "grid/layout/GridView.h"

namespace qrn {

// Virtual key codes.
enum GridKey : uint32_t {
  kKeyReturn = 13,
  kKeyLeft = 37,
  kKeyUp = 38,
  kKeyRight = 39,
  kKeyDown = 40,
  kKeyDelete = 46,
};

// Of the edit box: the selection's ends and the text's length, in characters.
struct EditCaret {
  uint32_t start;
  uint32_t end;
  uint32_t length;
};

class GridKeys {
 public:
  GridKeys(GridModel& model, GridScreen& screen) noexcept : model_(model), screen_(screen) {}

  // A key of the grid's own window. False when the key is left to the window's default.
  bool OnGridKey(uint32_t key);
  // A key of the edit box. False when it is left to the box.
  bool OnEditKey(uint32_t key, const EditCaret& caret);

 private:
  struct GridKeyRow {
    uint32_t key;
    bool (GridKeys::*run)();
  };
  static const GridKeyRow kGridKeys[];

  bool Right();
  bool Left();
  bool Up();
  bool Down();
  bool Delete();

  void ComeIntoView();
  void GoRight();
  void GoLeft();
  void LeaveRow(int32_t by);
  bool ScrollRows(int32_t by);
  void MoveTo(int32_t row, int32_t col);
  void DeleteAndShow();
  GridView View() const noexcept { return {model_, screen_.UsableSize()}; }
  bool CurrentIsInView() const noexcept { return View().IsInView(model_.Row, model_.Col); }

  GridModel& model_;
  GridScreen& screen_;
};

}  // namespace qrn
