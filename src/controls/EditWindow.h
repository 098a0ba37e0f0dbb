// What an edit control does with its "Edit" window. The window counts UTF-16 units; the limit of a
// text is in bytes of code page 932 all the same.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace qrn::editwindow {

// Units before the selection's start and end; equal without a selection.
struct Selection {
  DWORD start;
  DWORD end;
};
Selection GetSelection(HWND window) noexcept;
void Select(HWND window, Selection selection) noexcept;
void PutCaretLast(HWND window) noexcept;

// How much of `text` may take the place of the selection, so that at most `limit` bytes result.
std::wstring_view FittingPart(HWND window, std::wstring_view text, size_t limit);

// Keep a window's text within `limit` bytes (0 or less: no limit) where its own limit, which counts
// units, would let more in. True when the message ends there.
//
// A typed character that does not fit; beeps.
bool RefusesTyped(HWND window, wchar_t typed, int limit);
// A clipboard's text that does not fit: what does is put in place of the selection.
bool PastesWithin(HWND window, int limit);
// EM_REPLACESEL with `text`; `replace` sends it on with the part that fits.
template <class Replace>
bool ReplacesWithin(HWND window, const wchar_t* text, int limit, Replace replace) {
  if (limit <= 0 || text == nullptr) return false;
  replace(std::wstring(FittingPart(window, text, static_cast<size_t>(limit))).c_str());
  return true;
}

bool IsReadOnly(HWND window) noexcept;
bool IsMultiLine(HWND window) noexcept;

// The clipboard's text; empty when it has none.
std::wstring ClipboardText(HWND window);

}  // namespace qrn::editwindow
