#include "host/designer/model/CodeTyping.h"

#include <algorithm>

namespace qrn::designer {
namespace {

constexpr std::u16string_view kBlanks = u" \t";
constexpr std::u16string_view kLineEnds = u"\r\n";

char16_t Lower(char16_t unit) noexcept {
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
}

bool IsWordPart(char16_t unit) noexcept {
  return (Lower(unit) >= u'a' && Lower(unit) <= u'z') || (unit >= u'0' && unit <= u'9') ||
         unit == u'_' || unit >= 0x80;
}

bool StandsAt(std::u16string_view text, const Sought& sought, size_t at) noexcept {
  const std::u16string_view there = text.substr(at, sought.text.size());
  const bool isSame =
      std::equal(there.begin(), there.end(), sought.text.begin(), sought.text.end(),
                 [&](char16_t one, char16_t other) {
                   return sought.matchCase ? one == other : Lower(one) == Lower(other);
                 });
  if (!isSame || !sought.wholeWord) return isSame;
  const size_t end = at + sought.text.size();
  return (at == 0 || !IsWordPart(text[at - 1])) && (end == text.size() || !IsWordPart(text[end]));
}

// `shift` is given each line without its end and gives what it becomes.
template <class Shift>
std::u16string EachLine(std::u16string_view lines, Shift shift) {
  std::u16string all;
  while (!lines.empty()) {
    const size_t words = std::min(lines.find_first_of(kLineEnds), lines.size());
    const size_t next = std::min(lines.find_first_not_of(kLineEnds, words), lines.size());
    all.append(shift(lines.substr(0, words))).append(lines.substr(words, next - words));
    lines.remove_prefix(next);
  }
  return all;
}

bool IsSecondHalf(char16_t unit) noexcept { return unit >= 0xDC00 && unit <= 0xDFFF; }

// Between these two nothing can be cut.
bool BelongTogether(char16_t first, char16_t second) noexcept {
  return (first == u'\r' && second == u'\n') || IsSecondHalf(second);
}

bool IsCut(std::u16string_view text, size_t at) noexcept {
  return at > 0 && at < text.size() && BelongTogether(text[at - 1], text[at]);
}

}  // namespace

std::u16string_view IndentOf(std::u16string_view line) noexcept {
  return line.substr(0, std::min(line.find_first_not_of(kBlanks), line.size()));
}

size_t BlanksToStop(size_t column) noexcept { return kTabStop - column % kTabStop; }

std::u16string ShiftedRight(std::u16string_view lines) {
  return EachLine(lines, [](std::u16string_view line) {
    return std::u16string(line.empty() ? 0 : kTabStop, u' ') + std::u16string(line);
  });
}

std::u16string ShiftedLeft(std::u16string_view lines) {
  return EachLine(lines, [](std::u16string_view line) {
    if (line.starts_with(u'\t')) return std::u16string(line.substr(1));
    const size_t blanks = std::min(line.find_first_not_of(u' '), line.size());
    return std::u16string(line.substr(std::min(blanks, kTabStop)));
  });
}

std::optional<size_t> FindInText(std::u16string_view text, const Sought& sought, size_t from) {
  if (sought.text.empty() || sought.text.size() > text.size()) return std::nullopt;
  const size_t places = text.size() - sought.text.size() + 1;
  const size_t first = from % places;
  for (size_t step = 0; step < places; ++step) {
    const size_t at = sought.down ? (first + step) % places
                                  : (std::min(from, places) + 2 * places - 1 - step) % places;
    if (StandsAt(text, sought, at)) return at;
  }
  return std::nullopt;
}

TextChange ChangeBetween(std::u16string_view before, std::u16string_view after) {
  const auto starts = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
  size_t start = static_cast<size_t>(starts.first - before.begin());
  while (IsCut(before, start) || IsCut(after, start)) --start;
  const size_t most = std::min(before.size(), after.size()) - start;
  size_t end = 0;
  while (end < most && before[before.size() - 1 - end] == after[after.size() - 1 - end]) ++end;
  while (end > 0 && (IsCut(before, before.size() - end) || IsCut(after, after.size() - end))) --end;
  return {start, before.size() - start - end,
          std::u16string(after.substr(start, after.size() - start - end))};
}

}  // namespace qrn::designer
