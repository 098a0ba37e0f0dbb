#include "platform/CodePageSink.h"

#include <algorithm>

#include "platform/CodePage.h"
#include "platform/Utf.h"

namespace qrn {
namespace {

bool BeginsPair(char16_t unit) { return (unit & 0xFC00) == 0xD800; }

}  // namespace

// A pair is converted whole: of a full store whose last unit begins one, that unit waits on.
void CodePageSink::Put(char16_t unit) noexcept {
  if (count_ == kWaiting) Flush(BeginsPair(waiting_[kWaiting - 1]) ? kWaiting - 1 : kWaiting);
  waiting_[count_++] = unit;
}

void CodePageSink::Flush(size_t count) noexcept {
  char bytes[2 * kWaiting];
  const std::string_view text(bytes, NarrowUnits({waiting_, count}, bytes));
  std::copy(waiting_ + count, waiting_ + count_, waiting_);
  count_ -= count;
  if (full_ || out_.empty()) return;
  const size_t taken = CutAtCharacter(text, out_.size() - 1 - used_);
  std::copy_n(text.data(), taken, out_.data() + used_);
  used_ += taken;
  full_ = taken < text.size();
}

size_t CodePageSink::Finish() noexcept {
  Flush(count_);
  if (!out_.empty()) out_[used_] = '\0';
  return used_;
}

size_t CopyUtf8(std::span<char> out, std::string_view utf8) noexcept {
  CodePageSink sink(out);
  while (!utf8.empty()) {
    const Utf16Character character = TakeUtf8(utf8);
    for (size_t i = 0; i < character.size; ++i) sink.Put(character.units[i]);
  }
  return sink.Finish();
}

}  // namespace qrn
