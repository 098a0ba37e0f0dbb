// What keys do to lines of code beyond putting in a character, and where a text stands in it. Plain
// functions of text, for whatever editor shows it.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace qrn::designer {

inline constexpr size_t kTabStop = 4;  // columns, as Visual Basic has them

// The blanks and tabs that a line begins with: what the next one begins with too.
std::u16string_view IndentOf(std::u16string_view line) noexcept;

// Blanks from a column, counted from 0, to the next stop.
size_t BlanksToStop(size_t column) noexcept;

// Lines (ends of any kind) a stop further to the right, or to the left as far as they have blanks.
// Empty ones stay.
std::u16string ShiftedRight(std::u16string_view lines);
std::u16string ShiftedLeft(std::u16string_view lines);

struct Sought {
  std::u16string text;
  bool down = true;
  bool matchCase = false;  // else letters A to Z are alike whatever their case
  bool wholeWord = false;  // no letter, digit or underscore on either side
};

// Where it stands next: the first at or behind `from` going down, the last that begins before it
// going up; round the end and on from the other, so nothing only if it is nowhere.
std::optional<size_t> FindInText(std::u16string_view text, const Sought& sought, size_t from);

// What must be replaced to make one text another: `count` units at `at` by `text`. Halves neither a
// character nor a CR LF.
struct TextChange {
  size_t at = 0;
  size_t count = 0;
  std::u16string text;
};
TextChange ChangeBetween(std::u16string_view before, std::u16string_view after);

}  // namespace qrn::designer
