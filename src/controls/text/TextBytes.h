// Places and lengths of a window's text in bytes of code page 932. The system's edit window counts
// UTF-16 units; the limit of an edit control and the cut of its `SelText` count bytes.
#pragma once

#include <cstddef>
#include <string_view>

namespace qrn {

// Bytes that the text takes in the code page, without a NUL.
size_t BytesOf(std::u16string_view text);

// Units from the start of the text that take at most `bytes` bytes; no character is halved.
size_t UnitsWithin(std::u16string_view text, size_t bytes);

}  // namespace qrn
