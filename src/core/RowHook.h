// The row hook of all list fills: each row's text passes through the control's `Format` event
// before it is added. A handler rewrites the row by assigning the event's text or by calling
// DbSetFormattedString (plain fills) or DbExSetFormattedString (extended fills); the call wins.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "core/RowSink.h"

namespace qrn {

// Bytes of a row's text that come back from the event; a NUL ends it too.
inline constexpr size_t kFormattedRowSize = 512;

class RowHook {
 public:
  // The event gets at most `wideLimit` UTF-16 units of a row.
  RowHook(RowSink& sink, size_t wideLimit) : sink_(sink), wideLimit_(wideLimit) {}

  // Runs the hook for a row of text `line` (code page 932). `rowText` is where the exported
  // function of this kind of fill stores its text; it is emptied first. The row's text, valid until
  // the next row, or null when the handler cancelled.
  [[nodiscard]] const char* Format(char* rowText, std::string_view line);

 private:
  RowSink& sink_;
  const size_t wideLimit_;
  // Kept from row to row for their memory.
  std::u16string sent_;
  std::u16string lineData_;
  std::string row_;
};

}  // namespace qrn
