// Boxes that a program shows: message boxes, dialogs, property pages. Every function may be called
// from another thread than the box's.
#pragma once

#include <windows.h>

#include <string>

namespace qrn::host {

// The visible message box or dialog of this process in front; null if there is none.
HWND FrontBox() noexcept;
// The visible window of this process with that title, blanks at its ends aside; null if none.
HWND WindowTitled(const std::wstring& title) noexcept;

// The message box in front, which keeps the user from the forms; null if there is none.
HWND FrontMessage() noexcept;

std::wstring TextOfWindow(HWND window);
// What a message box says.
std::wstring BoxText(HWND box);

// A button by its face (without &, whatever the case) or by one of the names OK, Cancel, Abort,
// Retry, Ignore, Yes, No; null if the box has none such.
HWND ButtonOf(HWND box, const std::wstring& name) noexcept;
void PressButton(HWND box, HWND button) noexcept;
// A face without the letter of its key: "開く(&O)..." is "開く".
std::wstring WithoutMarks(std::wstring text);

// A child at any depth by its id; null if there is none.
HWND ItemOf(HWND box, int id) noexcept;
// Puts a text into a field.
void EnterText(HWND item, const std::wstring& text) noexcept;
// Chooses a line of a list or combo box and tells its parent. False if there is no such line.
bool ChooseLine(HWND item, const std::wstring& text) noexcept;
// Where the first line that begins with the text lies on the screen, of a list or of a combo box
// that is dropped down; empty if it is not in view.
RECT LinePlace(HWND item, const std::wstring& text) noexcept;
bool IsComboBox(HWND item) noexcept;
// What a field shows; of a list or combo box the chosen line.
std::wstring ItemText(HWND item);
// An item of the window's menu bar, and of a menu that is open, by its words without its key: where
// it lies on the screen. Empty if there is none that can be chosen.
RECT BarItemPlace(HWND window, const std::wstring& words) noexcept;
RECT OpenItemPlace(const std::wstring& words) noexcept;
// Brings the tab of that title in front. False if there is none.
bool ChooseTab(HWND box, const std::wstring& title);

}  // namespace qrn::host
