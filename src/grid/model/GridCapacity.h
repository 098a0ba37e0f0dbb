// How large a grid can become: the store is made once, for as many cells.
#pragma once

#include <cstdint>

namespace qrn {

struct GridCapacity {
  int32_t maxRows = 1024;  // grid_max_row of quorin.ini
  int32_t maxCols = 64;    // grid_max_col

  // As the settings file has them, which is not checked: a grid of no cells, or of more than there
  // is memory for, goes without a store.
  static GridCapacity Read() noexcept;
};

}  // namespace qrn
