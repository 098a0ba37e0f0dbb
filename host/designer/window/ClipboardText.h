// Text on the system's clipboard.
#pragma once

#include <windows.h>

#include <string>

namespace qrn::designer {

// UTF-8. Nothing happens where another program holds the clipboard.
void PutClipboardText(HWND owner, const std::string& utf8);
// Empty if there is none.
std::string ClipboardText(HWND owner);

}  // namespace qrn::designer
