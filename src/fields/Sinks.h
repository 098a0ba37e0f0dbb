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

namespace detail {

// Copies `count` bytes, from one to two words, as its first and its last word.
template <class Word>
void CopyEnds(char* to, const char* from, size_t count) noexcept {
  Word first, last;
  std::memcpy(&first, from, sizeof first);
  std::memcpy(&last, from + count - sizeof last, sizeof last);
  std::memcpy(to, &first, sizeof first);
  std::memcpy(to + count - sizeof last, &last, sizeof last);
}

// memcpy for the few bytes that a field mostly has.
[[gnu::noinline]] inline void CopyFew(char* to, const char* from, size_t count) noexcept {
  if (count > 2 * sizeof(uint64_t)) {
    std::memcpy(to, from, count);
  } else if (count >= sizeof(uint64_t)) {
    CopyEnds<uint64_t>(to, from, count);
  } else if (count >= sizeof(uint32_t)) {
    CopyEnds<uint32_t>(to, from, count);
  } else if (count >= sizeof(uint16_t)) {
    CopyEnds<uint16_t>(to, from, count);
  } else if (count != 0) {
    *to = *from;
  }
}

}  // namespace detail

// Text with its NUL: one byte is kept back for it, and it is written when the sink goes out of
// scope. An empty span takes nothing, not even the NUL. What readers put most is inlined by force:
// the sink then lives in registers.
class TextSink {
 public:
  explicit TextSink(std::span<char> out) noexcept : out_(out) {}
  ~TextSink() {
    if (!out_.empty()) out_[used_] = '\0';
  }
  TextSink(const TextSink&) = delete;
  TextSink& operator=(const TextSink&) = delete;

  [[gnu::always_inline]] void Put(char byte) noexcept {
    if (Room() != 0) out_[used_++] = byte;
  }
  [[gnu::always_inline]] void Put(std::string_view text) noexcept {
    const size_t count = std::min(text.size(), Room());
    detail::CopyFew(out_.data() + used_, text.data(), count);
    used_ += count;
  }
  // The next `count` bytes, fewer where there is no room, for the caller to fill.
  [[gnu::always_inline]] std::span<char> Take(size_t count) noexcept {
    count = std::min(count, Room());
    used_ += count;
    return out_.subspan(used_ - count, count);
  }
  [[gnu::always_inline]] void Repeat(char byte, size_t count) noexcept {
    count = std::min(count, Room());
    if (count != 0) std::memset(out_.data() + used_, byte, count);
    used_ += count;
  }
  // In decimal; a negative number begins with "-".
  void PutNumber(std::integral auto number) noexcept {
    constexpr size_t kLongest = 24;
    if (Room() >= kLongest) {
      char* const end = out_.data() + used_;
      used_ += static_cast<size_t>(std::to_chars(end, end + kLongest, number).ptr - end);
      return;
    }
    char digits[kLongest];
    Put(std::string_view(digits, std::to_chars(digits, digits + sizeof digits, number).ptr));
  }
  // Two digits of a number below 100.
  [[gnu::always_inline]] void PutPair(unsigned number) noexcept {
    const char digits[2] = {static_cast<char>('0' + number / 10),
                            static_cast<char>('0' + number % 10)};
    if (Room() < sizeof digits) return Put(std::string_view(digits, sizeof digits));
    out_[used_++] = digits[0];
    out_[used_++] = digits[1];
  }
  // At least `width` characters, filled with "0" behind the sign.
  [[gnu::always_inline]] void PutPadded(int number, int width) noexcept;

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
  const auto small = static_cast<unsigned>(number);
  if (width == 2 && small < 100) return PutPair(small);
  if (width == 4 && small < 10000) {
    PutPair(small / 100);
    return PutPair(small % 100);
  }
  char digits[24];
  const auto magnitude = number < 0 ? 0U - small : small;
  const auto length = std::to_chars(digits, digits + sizeof digits, magnitude).ptr - digits;
  if (number < 0) Put('-');
  const auto missing = width - (number < 0 ? 1 : 0) - length;
  if (missing > 0) Repeat('0', static_cast<size_t>(missing));
  Put(std::string_view(digits, static_cast<size_t>(length)));
}

}  // namespace qrn
