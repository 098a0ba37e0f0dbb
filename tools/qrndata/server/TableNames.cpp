#include "tools/qrndata/server/TableNames.h"

#include <algorithm>
#include <string_view>

#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Text.h"

namespace qrndata {

namespace fs = std::filesystem;

namespace {

// Short enough for a number, and for what is named after it.
constexpr size_t kLongestTable = 48;

// Each row of other characters is one _; none stands at an end.
std::string Plain(const std::string& text) {
  std::string plain;
  for (const char c : Lowered(text)) {
    const bool isPlain = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
    if (isPlain) {
      plain.push_back(c);
    } else if (!plain.empty() && plain.back() != '_') {
      plain.push_back('_');
    }
  }
  plain.resize(std::min(plain.size(), kLongestTable));
  while (plain.ends_with('_')) plain.pop_back();
  return plain;
}

// Digits first would want quotes wherever the name is written; some names are taken by the system.
std::string NameFor(const std::string& text, std::string_view standard) {
  constexpr std::string_view kReserved[] = {"btrieve", "pg"};
  std::string name = Plain(text);
  if (name.empty()) return std::string(standard);
  const bool isReserved =
      std::ranges::any_of(kReserved, [&](std::string_view word) { return name.starts_with(word); });
  if (isReserved || (name[0] >= '0' && name[0] <= '9')) name.insert(0, std::string(standard) + "_");
  return name;
}

}  // namespace

std::string SchemaNameOf(const fs::path& directory) {
  std::error_code ignored;
  fs::path whole = fs::weakly_canonical(fs::absolute(directory, ignored), ignored);
  if (!whole.has_filename()) whole = whole.parent_path();
  return NameFor(PathToUtf8(whole.filename()), "data");
}

std::string TableNames::Take(const fs::path& file) {
  fs::path name = file;
  if (SameName(PathToUtf8(name.extension()), ".btr")) name.replace_extension();
  const std::string wanted = NameFor(PathToUtf8(name), "file");
  std::string given = wanted;
  for (int number = 2; !taken_.insert(given).second; ++number) {
    given = wanted + "_" + std::to_string(number);
  }
  return given;
}

}  // namespace qrndata
