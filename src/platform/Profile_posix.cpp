// Reads the file anew at each call: settings are read a dozen times in a process.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <new>
#include <optional>
#include <string>
#include <string_view>

#include "platform/CodePage.h"
#include "platform/Profile.h"

namespace qrn {
namespace {

constexpr std::string_view kBlanks = " \t\r\n\v\f";

std::string_view Trimmed(std::string_view text) {
  const size_t first = text.find_first_not_of(kBlanks);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string PathOf(const char* file) {
  if (file[0] == '/') return file;
  const char* directory = std::getenv("QUORIN_INI_DIR");
  return std::string(directory != nullptr ? directory : "/etc") + "/" + file;
}

// Editors save these files as UTF-8 or UTF-16 with a byte order mark, or in the code page without.
std::string InCodePage(std::string bytes) {
  if (bytes.starts_with("\xEF\xBB\xBF")) return Utf8ToCodePage(bytes.substr(3));
  if (!bytes.starts_with("\xFF\xFE")) return bytes;
  std::u16string wide((bytes.size() - 2) / 2, u'\0');
  std::memcpy(wide.data(), bytes.data() + 2, wide.size() * 2);
  return Utf16ToCodePage(wide);
}

std::string FileText(const char* file) {
  std::ifstream stream(PathOf(file), std::ios::binary);
  return InCodePage({std::istreambuf_iterator<char>(stream), {}});
}

// Without memory the defaults serve, as they do without the file.
std::string FileTextOrNothing(const char* file) noexcept {
  try {
    return FileText(file);
  } catch (const std::bad_alloc&) {
    return {};
  }
}

std::string_view NextLine(std::string_view& rest) {
  const size_t end = rest.find('\n');
  const std::string_view line = Trimmed(rest.substr(0, end));
  rest.remove_prefix(end == rest.npos ? rest.size() : end + 1);
  return line;
}

bool IsSection(std::string_view line, std::string_view section) {
  if (!line.starts_with('[')) return false;
  const size_t end = line.rfind(']');
  return end != line.npos && EqualIgnoringCase(line.substr(1, end - 1), section);
}

std::string_view WithoutQuotes(std::string_view value) {
  if (value.size() < 2 || value.front() != value.back()) return value;
  if (value.front() != '"' && value.front() != '\'') return value;
  return value.substr(1, value.size() - 2);
}

std::optional<std::string_view> ValueIn(std::string_view rest, std::string_view section,
                                        std::string_view key) {
  while (!rest.empty() && !IsSection(NextLine(rest), section)) {
  }
  while (!rest.empty()) {
    const std::string_view line = NextLine(rest);
    if (line.starts_with('[')) break;
    const size_t equals = line.find('=');
    if (line.starts_with(';') || equals == line.npos) continue;
    if (EqualIgnoringCase(Trimmed(line.substr(0, equals)), key)) {
      return WithoutQuotes(Trimmed(line.substr(equals + 1)));
    }
  }
  return std::nullopt;
}

std::string_view WithoutTrailingBlanks(std::string_view text) {
  const size_t last = text.find_last_not_of(' ');
  return last == text.npos ? std::string_view{} : text.substr(0, last + 1);
}

struct Base {
  std::string_view prefix;
  uint32_t value;
};
constexpr Base kBases[] = {{"0x", 16}, {"0o", 8}, {"0b", 2}};

uint32_t TakeBase(std::string_view& text) {
  for (const Base& base : kBases) {
    if (!text.starts_with(base.prefix)) continue;
    text.remove_prefix(base.prefix.size());
    return base.value;
  }
  return 10;
}

uint32_t DigitValue(char digit) {
  if (digit >= '0' && digit <= '9') return static_cast<uint32_t>(digit - '0');
  if (digit >= 'A' && digit <= 'Z') return static_cast<uint32_t>(digit - 'A' + 10);
  if (digit >= 'a' && digit <= 'z') return static_cast<uint32_t>(digit - 'a' + 10);
  return UINT32_MAX;
}

int LeadingNumber(std::string_view text) {
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  const uint32_t base = TakeBase(text);
  uint32_t number = 0;
  for (const char digit : text) {
    if (DigitValue(digit) >= base) break;
    number = number * base + DigitValue(digit);
  }
  return static_cast<int>(negative ? 0 - number : number);
}

}  // namespace

size_t ReadProfileText(const char* section, const char* key, const char* fallback,
                       std::span<char> out, const char* file) noexcept {
  if (out.empty()) return 0;
  const std::string text = FileTextOrNothing(file);
  const std::string_view value =
      ValueIn(text, section, key)
          .value_or(WithoutTrailingBlanks(fallback != nullptr ? fallback : ""));
  const size_t length = CutAtCharacter(value, out.size() - 1);
  std::copy_n(value.data(), length, out.data());
  out[length] = '\0';
  return length;
}

int ReadProfileInt(const char* section, const char* key, int fallback, const char* file) noexcept {
  char value[32];
  if (ReadProfileText(section, key, "", value, file) == 0) return fallback;
  return LeadingNumber(value);
}

}  // namespace qrn
