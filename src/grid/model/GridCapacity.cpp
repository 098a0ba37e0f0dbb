#include "grid/model/GridCapacity.h"

#include "platform/Profile.h"

namespace qrn {
namespace {

int32_t ReadNumber(const char* key, int32_t fallback) noexcept {
  return ReadProfileInt("quorin350", key, fallback, "quorin.ini");
}

}  // namespace

GridCapacity GridCapacity::Read() noexcept {
  const GridCapacity usual;
  return {.maxRows = ReadNumber("grid_max_row", usual.maxRows),
          .maxCols = ReadNumber("grid_max_col", usual.maxCols)};
}

}  // namespace qrn
