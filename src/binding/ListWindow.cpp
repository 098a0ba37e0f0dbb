#include "binding/ListWindow.h"

namespace qrn {
namespace {

// The messages of a kind of list that ask for its selection.
struct ListMessages {
  UINT selected;
  UINT textLength;
  UINT text;
};
constexpr ListMessages kListBox{LB_GETCURSEL, LB_GETTEXTLEN, LB_GETTEXT};
constexpr ListMessages kComboBox{CB_GETCURSEL, CB_GETLBTEXTLEN, CB_GETLBTEXT};
constexpr LRESULT kNone = -1;  // LB_ERR, CB_ERR

LPARAM Pointer(const void* text) { return reinterpret_cast<LPARAM>(text); }

std::string SelectedText(HWND window, const ListMessages& messages) {
  const LRESULT selected = SendMessageA(window, messages.selected, 0, 0);
  if (!window || selected == kNone) return {};
  const LRESULT length =
      SendMessageA(window, messages.textLength, static_cast<WPARAM>(selected), 0);
  if (length <= 0) return {};
  // The length is that of the wide text at least: bytes may be up to twice as many.
  std::string text(static_cast<size_t>(length) * 2 + 1, '\0');
  const LRESULT bytes =
      SendMessageA(window, messages.text, static_cast<WPARAM>(selected), Pointer(text.data()));
  text.resize(bytes > 0 ? static_cast<size_t>(bytes) : 0);
  return text;
}

std::string TextOf(HWND window) {
  std::string text(static_cast<size_t>(GetWindowTextLengthA(window)) * 2 + 1, '\0');
  const int length = GetWindowTextA(window, text.data(), static_cast<int>(text.size()));
  text.resize(static_cast<size_t>(length));
  return text;
}

}  // namespace

std::string ReadListBox(HWND list) { return SelectedText(list, kListBox); }

void SelectInListBox(HWND list, const char* text) {
  SendMessageA(list, LB_SELECTSTRING, static_cast<WPARAM>(-1), Pointer(text));
}

void ClearListBox(HWND list) { SendMessageA(list, LB_SETCURSEL, static_cast<WPARAM>(-1), 0); }

std::string ReadComboBox(HWND combo, bool hasOwnText) {
  return hasOwnText ? TextOf(combo) : SelectedText(combo, kComboBox);
}

void WriteComboBox(HWND combo, bool hasOwnText, const char* text) {
  if (hasOwnText) {
    SetWindowTextA(combo, text);
    return;
  }
  const LRESULT found =
      SendMessageA(combo, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), Pointer(text));
  if (found != kNone) SendMessageA(combo, CB_SETCURSEL, static_cast<WPARAM>(found), 0);
}

void ClearComboBox(HWND combo) {
  SendMessageA(combo, CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
  SetWindowTextA(combo, "");
}

}  // namespace qrn
