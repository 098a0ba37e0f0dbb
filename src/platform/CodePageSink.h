// Code page bytes from UTF-16 units as they come, into the caller's memory. Allocates nothing: it
// serves readers that cannot fail, and the message that says that there is no memory.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace qrn {

class CodePageSink {
 public:
  explicit CodePageSink(std::span<char> out) noexcept : out_(out) {}

  // What does not fit with a NUL is dropped, at a character.
  void Put(char16_t unit) noexcept;

  // Puts the NUL; the bytes in front of it. An empty `out` takes nothing.
  size_t Finish() noexcept;

 private:
  static constexpr size_t kWaiting = 64;

  void Flush(size_t count) noexcept;

  std::span<char> out_;
  size_t used_ = 0;
  bool full_ = false;
  char16_t waiting_[kWaiting];
  size_t count_ = 0;
};

// Bytes of at most `out.size() / 2` units, each character whole; their number.
size_t NarrowUnits(std::u16string_view wide, std::span<char> out) noexcept;

}  // namespace qrn
