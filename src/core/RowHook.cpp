#include "core/RowHook.h"

#include <algorithm>

#include "platform/CodePage.h"

namespace qrn {

const char* RowHook::Format(char* rowText, std::string_view line) {
  *rowText = '\0';
  sent_.resize(line.size());
  sent_.resize(std::min(WidenText(line, sent_), wideLimit_));
  lineData_ = sent_;
  if (!sink_.Format(lineData_)) return nullptr;
  if (*rowText != '\0') return (row_ = rowText).c_str();
  const bool same = lineData_ == sent_ && sent_.size() < wideLimit_;  // as in most rows
  if (same) {
    row_ = line;
  } else {
    row_ = Utf16ToCodePage(lineData_);
  }
  row_.resize(CutAtCharacter(row_.c_str(), kFormattedRowSize));
  return row_.c_str();
}

}  // namespace qrn
