#include "core/RowHook.h"

#include "platform/CodePage.h"

namespace qrn {

std::optional<std::string> FormatRow(RowSink& sink, char* rowText, std::string_view line,
                                     size_t wideLimit) {
  *rowText = '\0';
  std::u16string lineData = CodePageToUtf16(line);
  if (lineData.size() > wideLimit) lineData.resize(wideLimit);
  const std::u16string sent = lineData;
  if (!sink.Format(lineData)) return std::nullopt;
  if (*rowText != '\0') return std::string(rowText);
  const bool same = lineData == sent && sent.size() < wideLimit;  // as in most rows of most fills
  const std::string row = same ? std::string(line) : Utf16ToCodePage(lineData);
  return row.substr(0, CutAtCharacter(row.c_str(), kFormattedRowSize));
}

}  // namespace qrn
