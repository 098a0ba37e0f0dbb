// Texts that a program says in the user's language: a table with a row for each id, UTF-8.
//
// `Id` is an enumeration whose last name is kCount. In a text %1 to %9 stand for words that differ.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace qrn {

enum class Language { Japanese, English };

template <class Id>
struct TextRow {
  Id id;
  const char* japanese;
  const char* english;
};

// Each row stands at its id, and none is missing: for a static_assert beside a table.
template <class Id, size_t kRows>
constexpr bool StandAtTheirIds(const TextRow<Id> (&rows)[kRows]) noexcept {
  for (size_t at = 0; at < kRows; ++at) {
    if (static_cast<size_t>(rows[at].id) != at) return false;
  }
  return kRows == static_cast<size_t>(Id::kCount);
}

template <class Id, size_t kRows>
constexpr const char* TextOf(const TextRow<Id> (&rows)[kRows], Id id, Language language) noexcept {
  const TextRow<Id>& row = rows[static_cast<size_t>(id)];
  return language == Language::Japanese ? row.japanese : row.english;
}

// `pattern` with the words in the places of %1, %2 ...; a place without a word is left out.
template <class Char>
std::basic_string<Char> WithWords(std::basic_string_view<Char> pattern,
                                  const std::vector<std::basic_string<Char>>& words) {
  std::basic_string<Char> said;
  for (size_t at = 0; at < pattern.size(); ++at) {
    const bool isPlace = pattern[at] == '%' && at + 1 < pattern.size() && pattern[at + 1] >= '1' &&
                         pattern[at + 1] <= '9';
    if (!isPlace) {
      said += pattern[at];
      continue;
    }
    const auto word = static_cast<size_t>(pattern[++at] - '1');
    if (word < words.size()) said += words[word];
  }
  return said;
}

template <class Id, size_t kRows>
std::string Said(const TextRow<Id> (&rows)[kRows], Id id, Language language,
                 const std::vector<std::string>& words = {}) {
  return WithWords<char>(TextOf(rows, id, language), words);
}

}  // namespace qrn
