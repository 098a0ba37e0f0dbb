// The two scroll bars of a grid, each there only while it is needed.
#pragma once

#include <windows.h>

#include "grid/layout/GridFrame.h"
#include "grid/layout/GridScreen.h"
#include "grid/layout/GridScroll.h"

namespace qrn {

class GridBarWindows {
 public:
  GridBarWindows() = default;
  GridBarWindows(const GridBarWindows&) = delete;
  GridBarWindows& operator=(const GridBarWindows&) = delete;

  GridBars shown() const noexcept { return {horizontal_ != nullptr, vertical_ != nullptr}; }
  HWND Of(GridDirection direction) const noexcept {
    return direction == GridDirection::Horizontal ? horizontal_ : vertical_;
  }

  // Makes, moves and destroys them as `bars` says.
  void LayOut(HWND grid, GridSize window, int32_t depth, GridBars bars) noexcept;
  // Sets the ranges that rows and columns ask for. A range that is not needed stays as it was.
  void SetRanges(const GridModel& model, int32_t innerHeight) noexcept;
  void SetPosition(GridDirection direction, int32_t position) noexcept;

  // From 1 to 1 for a bar that is not there: nothing moves then.
  BarRange Range(GridDirection direction) const noexcept;
  // Where the thumb of a notice was dropped. The notice's own number has 16 bits.
  int32_t Thumb(GridDirection direction, WORD told) const noexcept;

  // Their windows have gone with the grid's.
  void Forget() noexcept { horizontal_ = vertical_ = nullptr; }

 private:
  HWND horizontal_ = nullptr;
  HWND vertical_ = nullptr;
};

}  // namespace qrn
