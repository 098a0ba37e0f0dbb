// What the fuzz targets share: the input taken apart from its front, and the end of a run that has
// found something.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <span>
#include <string>
#include <vector>

namespace qrn::fuzz {

[[noreturn]] inline void Fail(const std::string& what) {
  std::fprintf(stderr, "\n%s\n", what.c_str());
  std::abort();
}

inline void Require(bool holds, const char* what = "what was accepted cannot be used") {
  if (!holds) Fail(what);
}
inline void Require(bool holds, const std::string& what) {
  if (!holds) Fail(what);
}

// At its end every byte is zero.
class Input {
 public:
  Input() = default;
  Input(const uint8_t* data, size_t size) : rest_(data, size) {}

  bool IsOver() const { return rest_.empty(); }
  uint8_t Byte() {
    if (rest_.empty()) return 0;
    const uint8_t byte = rest_[0];
    rest_ = rest_.subspan(1);
    return byte;
  }
  int16_t Number() {
    const uint8_t low = Byte();
    return static_cast<int16_t>(low | Byte() << 8);
  }
  // One of the numbers that matter, or any.
  int16_t Pick(std::initializer_list<int16_t> usual) {
    const uint8_t byte = Byte();
    return byte < usual.size() * 16 ? usual.begin()[byte / 16] : Number();
  }
  // An index into `count` things.
  size_t Index(size_t count) {
    size_t number = 0;
    for (int shift = 0; shift < 24; shift += 8) number |= size_t{Byte()} << shift;
    return number % count;
  }
  // As many bytes as there are, and as text what stands before the first NUL.
  std::vector<uint8_t> Take(size_t most) {
    const auto part = rest_.first(std::min(most, rest_.size()));
    rest_ = rest_.subspan(part.size());
    return {part.begin(), part.end()};
  }
  std::string Text(size_t most) {
    const std::vector<uint8_t> bytes = Take(most);
    return {bytes.begin(), std::find(bytes.begin(), bytes.end(), uint8_t{0})};
  }

 private:
  std::span<const uint8_t> rest_;
};

}  // namespace qrn::fuzz
