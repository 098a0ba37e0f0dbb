#include "controls/EditWindow.h"

#include <algorithm>

#include "com/Text.h"
#include "com/WindowText.h"
#include "controls/text/TextBytes.h"

namespace qrn::editwindow {
namespace {

using com::AsUtf16;

constexpr wchar_t kReturn = 13;
constexpr wchar_t kFirstPrintable = 32;

LONG StyleOf(HWND window) noexcept { return GetWindowLongW(window, GWL_STYLE); }

// The clipboard, open until scope end.
class OpenedClipboard {
 public:
  explicit OpenedClipboard(HWND window) noexcept : open_(OpenClipboard(window) != FALSE) {}
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;
  ~OpenedClipboard() {
    if (open_) CloseClipboard();
  }
  HANDLE Data(UINT format) const noexcept { return open_ ? GetClipboardData(format) : nullptr; }

 private:
  bool open_;
};

}  // namespace

Selection GetSelection(HWND window) noexcept {
  Selection selection{};
  SendMessageW(window, EM_GETSEL, reinterpret_cast<WPARAM>(&selection.start),
               reinterpret_cast<LPARAM>(&selection.end));
  return selection;
}

void Select(HWND window, Selection selection) noexcept {
  SendMessageW(window, EM_SETSEL, selection.start, static_cast<LPARAM>(selection.end));
}

void PutCaretLast(HWND window) noexcept {
  const auto length = static_cast<DWORD>(GetWindowTextLengthW(window));
  Select(window, {length, length});
}

std::wstring_view FittingPart(HWND window, std::wstring_view text, size_t limit) {
  std::wstring kept = com::TextOfWindow(window);
  const Selection selection = GetSelection(window);
  const size_t start = std::min<size_t>(selection.start, kept.size());
  kept.erase(start, std::max(selection.end, selection.start) - selection.start);
  const size_t taken = BytesOf(AsUtf16(kept));
  return text.substr(0, UnitsWithin(AsUtf16(text), limit > taken ? limit - taken : 0));
}

bool RefusesTyped(HWND window, wchar_t typed, int limit) {
  if (limit <= 0 || IsReadOnly(window)) return false;
  const bool newLine = typed == kReturn && IsMultiLine(window);
  if (typed < kFirstPrintable && !newLine) return false;
  const std::wstring_view text =
      newLine ? std::wstring_view(L"\r\n") : std::wstring_view(&typed, 1);
  if (FittingPart(window, text, static_cast<size_t>(limit)).size() == text.size()) return false;
  MessageBeep(MB_OK);
  return true;
}

// A text that fits is the window's own business.
bool PastesWithin(HWND window, int limit) {
  if (limit <= 0 || IsReadOnly(window)) return false;
  std::wstring text = ClipboardText(window);
  const auto fits = FittingPart(window, text, static_cast<size_t>(limit));
  if (fits.size() == text.size()) return false;
  if (!IsMultiLine(window)) text.resize(std::min(text.find(L'\r'), text.size()));
  SendMessageW(window, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
  return true;
}

bool IsReadOnly(HWND window) noexcept { return (StyleOf(window) & ES_READONLY) != 0; }
bool IsMultiLine(HWND window) noexcept { return (StyleOf(window) & ES_MULTILINE) != 0; }

std::wstring ClipboardText(HWND window) {
  const OpenedClipboard clipboard(window);
  const HANDLE data = clipboard.Data(CF_UNICODETEXT);
  const auto* text = data != nullptr ? static_cast<const wchar_t*>(GlobalLock(data)) : nullptr;
  if (text == nullptr) return {};
  std::wstring copy(text, wcsnlen(text, GlobalSize(data) / sizeof(wchar_t)));
  GlobalUnlock(data);
  return copy;
}

}  // namespace qrn::editwindow
