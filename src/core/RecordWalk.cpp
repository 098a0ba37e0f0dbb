#include "core/RecordWalk.h"

#include <algorithm>
#include <cstring>

#include "core/RecordBuffer.h"
#include "fields/FieldText.h"

namespace qrn {

bool RecordWalk::Next() noexcept {
  if (position_ + 1 >= table_.FieldCount) return false;
  ++position_;
  if ((Field().Flags & kFieldNullable) != 0) Advance(1);
  return true;
}

std::span<uint8_t> RecordWalk::Place() const noexcept { return RecordBytesFrom(table_, offset_); }

void RecordWalk::Step() noexcept {
  const auto place = Place();
  Advance(GetFieldStoredSize(settings_, Field(), place.data(), place.size()));
}

void RecordWalk::StepAsText(const char* text) noexcept {
  Advance(GetFieldStoredSize(settings_, Field(), text, std::strlen(text) + 1));
}

void RecordWalk::Advance(int64_t bytes) noexcept {
  const auto end = static_cast<int64_t>(RecordBytes(table_).size());
  offset_ = static_cast<int32_t>(std::clamp(offset_ + bytes, int64_t{0}, end));
}

}  // namespace qrn
