#include "host/form/SourceText.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "host/form/FilePath.h"
#include "platform/CodePage.h"

namespace qrn::form {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr char kEndOfText = '\x1A';
constexpr uintmax_t kLargestFile = 64u << 20;

char Lower(char byte) noexcept {
  return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

// Length of the line end at `at`, 0 where there is none.
size_t LineEndAt(std::string_view text, size_t at) {
  if (text[at] == '\n') return 1;
  if (text[at] != '\r') return 0;
  return at + 1 < text.size() && text[at + 1] == '\n' ? 2 : 1;
}

std::string Utf8Text(std::string_view bytes) {
  if (bytes.starts_with(kByteOrderMark)) return std::string(bytes.substr(kByteOrderMark.size()));
  return CodePageToUtf8(bytes);
}

}  // namespace

std::vector<std::string> SourceLines(std::string_view fileBytes) {
  const std::string text = Utf8Text(fileBytes.substr(0, fileBytes.find(kEndOfText)));
  std::vector<std::string> lines;
  size_t start = 0;
  for (size_t at = 0; at < text.size();) {
    const size_t end = LineEndAt(text, at);
    if (end == 0) {
      ++at;
      continue;
    }
    lines.push_back(text.substr(start, at - start));
    at += end;
    start = at;
  }
  if (start < text.size()) lines.push_back(text.substr(start));
  return lines;
}

std::string_view Trimmed(std::string_view text) noexcept {
  const size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

bool SameWord(std::string_view left, std::string_view right) noexcept {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return Lower(a) == Lower(b); });
}

std::string LowerWord(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), Lower);
  return lower;
}

bool TakeSign(std::string_view* text, char sign) noexcept {
  if (!text->starts_with(sign)) return false;
  text->remove_prefix(1);
  return true;
}

bool IsDigit(char byte) noexcept { return byte >= '0' && byte <= '9'; }

bool IsNameStart(char byte) noexcept {
  const char lower = Lower(byte);
  return (lower >= 'a' && lower <= 'z') || static_cast<unsigned char>(byte) >= 0x80;
}

bool IsNamePart(char byte) noexcept {
  return IsNameStart(byte) || (byte >= '0' && byte <= '9') || byte == '_';
}

bool IsName(std::string_view text) noexcept {
  return !text.empty() && IsNameStart(text[0]) && std::all_of(text.begin(), text.end(), IsNamePart);
}

std::string ReadWholeFile(const std::string& path) {
  const std::filesystem::path file = PathOf(path);
  std::error_code failed;
  const uintmax_t size = std::filesystem::file_size(file, failed);
  if (failed) throw std::runtime_error(path + ": cannot be read: there is no such file");
  if (size > kLargestFile) throw std::runtime_error(path + ": is too large (over 64 MB)");
  std::ifstream stream(file, std::ios::binary);
  std::string bytes(static_cast<size_t>(size), '\0');
  if (!stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size())) && size > 0) {
    throw std::runtime_error(path + ": cannot be read");
  }
  return bytes;
}

}  // namespace qrn::form
