#include "tools/qrndata/Names.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Text.h"

namespace qrndata {

namespace {

constexpr std::string_view kWideBlank = "\xE3\x80\x80";  // U+3000

// Without blanks and capitals. UTF-8, whose bytes of other characters are never ASCII.
std::string Folded(std::string_view utf8) {
  std::string folded;
  for (size_t at = 0; at < utf8.size(); ++at) {
    if (utf8.substr(at).starts_with(kWideBlank)) {
      at += kWideBlank.size() - 1;
    } else if (utf8[at] != ' ') {
      const bool isCapital = utf8[at] >= 'A' && utf8[at] <= 'Z';
      folded += isCapital ? static_cast<char>(utf8[at] - 'A' + 'a') : utf8[at];
    }
  }
  return folded;
}

std::vector<std::string_view> Characters(std::string_view utf8) {
  std::vector<std::string_view> characters;
  while (!utf8.empty()) {
    const size_t length = std::max<size_t>(CharacterLength(utf8), 1);
    characters.push_back(utf8.substr(0, length));
    utf8.remove_prefix(length);
  }
  return characters;
}

// Characters to add, take away or change until one text is the other.
size_t Distance(std::string_view left, std::string_view right) {
  const auto from = Characters(left), to = Characters(right);
  std::vector<size_t> row(to.size() + 1);
  std::iota(row.begin(), row.end(), size_t{0});
  for (size_t at = 1; at <= from.size(); ++at) {
    size_t diagonal = std::exchange(row[0], at);
    for (size_t column = 1; column <= to.size(); ++column) {
      const size_t changed = diagonal + (from[at - 1] == to[column - 1] ? 0 : 1);
      diagonal = row[column];
      row[column] = std::min({row[column] + 1, row[column - 1] + 1, changed});
    }
  }
  return row.back();
}

}  // namespace

std::optional<size_t> FindName(const Names& names, std::string_view wanted) {
  const Converted bytes = ToCodePage(wanted, OnUnmappable::Error);
  if (!bytes.IsExact() || wanted.empty()) return std::nullopt;
  const auto exact = std::find(names.begin(), names.end(), bytes.text);
  if (exact != names.end()) return static_cast<size_t>(exact - names.begin());
  const std::string folded = Folded(wanted);
  std::optional<size_t> found;
  for (size_t at = 0; at < names.size(); ++at) {
    if (folded.empty() || Folded(Show(names[at])) != folded) continue;
    if (found && names[at] != names[*found]) return std::nullopt;
    if (!found) found = at;
  }
  return found;
}

std::string DidYouMean(const Names& names, std::string_view wanted) {
  constexpr size_t kMost = 2;
  const std::string folded = Folded(wanted);
  std::string nearest;
  size_t least = std::min(kMost, CountCharacters(folded) / 2) + 1;
  for (const std::string& name : names) {
    const std::string shown = Show(name);
    const size_t distance = Distance(Folded(shown), folded);
    if (name.empty() || distance >= least) continue;
    least = distance;
    nearest = shown;
  }
  return nearest.empty() ? "" : Say(Message::DidYouMean, nearest);
}

}  // namespace qrndata
