#include "grid/model/TextSlots.h"

#include <algorithm>
#include <utility>

namespace qrn {

bool TextSlots::Make(int64_t count) noexcept {
  constexpr int64_t kMost = PTRDIFF_MAX / sizeof(char*);
  if (count <= 0 || count > kMost) return false;
  slots_.reset(static_cast<char**>(AllocateZeroed(static_cast<size_t>(count) * sizeof(char*))));
  count_ = slots_ ? count : 0;
  reach_ = 0;
  return count_ > 0;
}

bool TextSlots::Set(int64_t index, std::string_view text) noexcept {
  if (text.empty()) return Free(index), true;
  if (!Has(index)) return true;
  // Made before the old one is freed: the text may be that very one.
  char* copy = pool_.Take(text);
  pool_.GiveBack(std::exchange(slots_.get()[index], copy));
  reach_ = std::max(reach_, index + 1);
  return copy != nullptr;
}

void TextSlots::Move(int64_t from, int64_t to) noexcept {
  if (from == to) return;
  Free(to);
  if (!Has(from) || !Has(to)) return Free(from);
  std::swap(slots_.get()[from], slots_.get()[to]);
  reach_ = std::max(reach_, to + 1);
}

void TextSlots::Free(int64_t index) noexcept {
  if (Has(index)) pool_.GiveBack(std::exchange(slots_.get()[index], nullptr));
}

void TextSlots::Clear() noexcept {
  if (pool_.HasLong()) {
    for (int64_t index = 0; index < reach_; ++index) Free(index);
  }
  std::fill_n(slots_.get(), reach_, nullptr);
  pool_.ReleaseSlabs();
  reach_ = 0;
}

}  // namespace qrn
