#include "host/designer/document/FileText.h"

#include <algorithm>

#include "platform/CodePage.h"

namespace qrn::designer {

std::string FileText::Decode(std::string_view bytes) const {
  return isUtf8 ? std::string(bytes) : CodePageToUtf8(bytes);
}

std::optional<std::string> FileText::Encode(std::string_view utf8) const {
  if (isUtf8) return std::string(utf8);
  std::string bytes = Utf8ToCodePage(utf8);
  if (CodePageToUtf8(bytes) != utf8) return std::nullopt;
  return bytes;
}

std::vector<std::string_view> LinesWithEnds(std::string_view bytes) {
  std::vector<std::string_view> lines;
  while (!bytes.empty()) {
    size_t end = std::min(bytes.find_first_of("\r\n"), bytes.size());
    if (end < bytes.size()) end += bytes.substr(end).starts_with("\r\n") ? 2 : 1;
    lines.push_back(bytes.substr(0, end));
    bytes.remove_prefix(end);
  }
  return lines;
}

std::string_view WithoutEnd(std::string_view line) noexcept {
  return line.substr(0, std::min(line.find_first_of("\r\n"), line.size()));
}

}  // namespace qrn::designer
