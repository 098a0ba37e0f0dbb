// List boxes and combo boxes as the binding reads and writes them. Texts are code page 932.
#pragma once

#include <windows.h>

#include <string>

namespace qrn {

// The selected item's text; empty when nothing is selected.
std::string ReadListBox(HWND list);
// Selects the first item that begins with the text; where there is none the selection stays.
void SelectInListBox(HWND list, const char* text);
void ClearListBox(HWND list);

// `hasOwnText` is a combo box whose text may be anything (`Style` 0): that text is read and
// written. Of any other the item of exactly that text (but for case) is selected.
std::string ReadComboBox(HWND combo, bool hasOwnText);
void WriteComboBox(HWND combo, bool hasOwnText, const char* text);
void ClearComboBox(HWND combo);

}  // namespace qrn
