// Writing into the caller's memory without ever passing its end: what does not fit is dropped.
#pragma once

#include <algorithm>
#include <charconv>
#include <concepts>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>

namespace qrn {

// Text with its NUL: one byte is kept back for it, and it is written when the sink goes out of
// scope. An empty span takes nothing, not even the NUL.
class TextSink {
 public:
  explicit TextSink(std::span<char> out) noexcept : out_(out) {}
  ~TextSink() {
    if (!out_.empty()) out_[used_] = '\0';
  }
  TextSink(const TextSink&) = delete;
  TextSink& operator=(const TextSink&) = delete;

  void Put(char byte) noexcept {
    if (Room() != 0) out_[used_++] = byte;
  }
  void Put(std::string_view text) noexcept {
    const size_t count = std::min(text.size(), Room());
    if (count != 0) std::memcpy(out_.data() + used_, text.data(), count);
    used_ += count;
  }
  void Repeat(char byte, size_t count) noexcept {
    count = std::min(count, Room());
    if (count != 0) std::memset(out_.data() + used_, byte, count);
    used_ += count;
  }
  // In decimal; a negative number begins with "-".
  void PutNumber(std::integral auto number) noexcept {
    char digits[24];
    Put(std::string_view(digits, std::to_chars(digits, digits + sizeof digits, number).ptr));
  }
  // At least `width` characters, filled with "0" behind the sign.
  void PutPadded(int number, int width) noexcept;

 private:
  size_t Room() const noexcept { return out_.empty() ? 0 : out_.size() - 1 - used_; }

  std::span<char> out_;
  size_t used_ = 0;
};

// Bytes as they come, without a NUL of their own.
class ByteSink {
 public:
  explicit ByteSink(std::span<uint8_t> out) noexcept : out_(out) {}

  void Put(char byte) noexcept { Repeat(byte, 1); }
  void Put(std::string_view text) noexcept {
    const size_t count = std::min(text.size(), out_.size());
    if (count != 0) std::memcpy(out_.data(), text.data(), count);
    out_ = out_.subspan(count);
  }
  void Repeat(char byte, size_t count) noexcept {
    count = std::min(count, out_.size());
    if (count != 0) std::memset(out_.data(), byte, count);
    out_ = out_.subspan(count);
  }

 private:
  std::span<uint8_t> out_;
};

inline void TextSink::PutPadded(int number, int width) noexcept {
  char digits[16];
  const auto magnitude = number < 0 ? 0U - static_cast<unsigned>(number) : unsigned(number);
  const auto length = std::to_chars(digits, digits + sizeof digits, magnitude).ptr - digits;
  if (number < 0) Put('-');
  const auto missing = width - (number < 0 ? 1 : 0) - length;
  if (missing > 0) Repeat('0', static_cast<size_t>(missing));
  Put(std::string_view(digits, static_cast<size_t>(length)));
}

}  // namespace qrn
