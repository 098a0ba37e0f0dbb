// Notices of a grid's scroll bars. Kept so: a page moves one row or column, as a line does, and
// nothing moves while the thumb is held.
#pragma once

#include "grid/layout/GridScreen.h"
#include "grid/layout/GridView.h"

namespace qrn {

// The bars' notices that have an effect, as the system numbers them.
enum GridBarNotice : uint32_t {
  kLineBack = 0,
  kLineOn = 1,
  kPageBack = 2,
  kPageOn = 3,
  kThumbDropped = 4,
};

struct BarRange {
  int32_t least;
  int32_t most;
};

class GridScroll {
 public:
  GridScroll(GridModel& model, GridScreen& screen) noexcept : model_(model), screen_(screen) {}

  // `thumb` counts from 1; it is read for a dropped thumb alone.
  void OnNotice(GridDirection direction, uint32_t notice, int32_t thumb, BarRange range);

 private:
  void KeepCurrentColumnInView();

  GridModel& model_;
  GridScreen& screen_;
};

}  // namespace qrn
