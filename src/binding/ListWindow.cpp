#include "binding/ListWindow.h"

#include "binding/ListItems.h"
#include "com/WindowText.h"
#include "platform/CodePage.h"

namespace qrn {
namespace {

std::string Narrow(const std::wstring& text) {
  return Utf16ToCodePage({reinterpret_cast<const char16_t*>(text.data()), text.size()});
}

// Searches from the first item on; the item's index, or kNone.
int32_t Find(HWND window, UINT message, const char* text) {
  const std::u16string wide = CodePageToUtf16(text);
  return static_cast<int32_t>(SendMessageW(window, message, static_cast<WPARAM>(ListItems::kNone),
                                           reinterpret_cast<LPARAM>(wide.c_str())));
}

void SetText(HWND window, const char* text) {
  SetWindowTextW(window, reinterpret_cast<const wchar_t*>(CodePageToUtf16(text).c_str()));
}

}  // namespace

std::string ReadListBox(HWND list) {
  return Narrow(ListItems(list, kListBoxMessages).SelectedText());
}

void SelectInListBox(HWND list, const char* text) { Find(list, LB_SELECTSTRING, text); }

void ClearListBox(HWND list) { ListItems(list, kListBoxMessages).Select(ListItems::kNone); }

std::string ReadComboBox(HWND combo, bool hasOwnText) {
  return Narrow(hasOwnText ? com::TextOfWindow(combo)
                           : ListItems(combo, kComboBoxMessages).SelectedText());
}

void WriteComboBox(HWND combo, bool hasOwnText, const char* text) {
  if (hasOwnText) {
    SetText(combo, text);
    return;
  }
  const int32_t found = Find(combo, CB_FINDSTRINGEXACT, text);
  if (found != ListItems::kNone) ListItems(combo, kComboBoxMessages).Select(found);
}

void ClearComboBox(HWND combo) {
  ListItems(combo, kComboBoxMessages).Select(ListItems::kNone);
  SetText(combo, "");
}

}  // namespace qrn
