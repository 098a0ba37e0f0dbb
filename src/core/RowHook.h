// The row hook of all list fills: each row's text passes through the control's `Format` event
// before it is added. A handler rewrites the row by assigning the event's text or by calling
// DbSetFormattedString (plain fills) or DbExSetFormattedString (extended fills); the call wins.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "core/RowSink.h"

namespace qrn {

// Bytes of a row's text that come back from the event; a NUL ends it too.
inline constexpr size_t kFormattedRowSize = 512;

// Runs the hook for a row of text `line` (code page 932). `rowText` is where the exported function
// of this kind of fill stores its text; it is emptied first. The event gets at most `wideLimit`
// UTF-16 units. The row's text, or nothing when the handler cancelled.
[[nodiscard]] std::optional<std::string> FormatRow(RowSink& sink, char* rowText,
                                                   std::string_view line, size_t wideLimit);

}  // namespace qrn
