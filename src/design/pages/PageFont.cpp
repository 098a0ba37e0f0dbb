#include "design/pages/PageFont.h"

#include <iterator>

#include "com/Handles.h"

namespace qrn::design {
namespace {

// The measure of dialogs: a letter's mean width, and the height of a line.
SIZE LetterOf(HFONT font) noexcept {
  constexpr wchar_t kLetters[] = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  constexpr int kCount = static_cast<int>(std::size(kLetters)) - 1;
  const com::WindowDc dc(nullptr);
  const com::Selected selected(dc.get(), font);
  SIZE extent{};
  TEXTMETRICW metrics{};
  GetTextExtentPoint32W(dc.get(), kLetters, kCount, &extent);
  GetTextMetricsW(dc.get(), &metrics);
  return {(2 * extent.cx / kCount + 1) / 2, metrics.tmHeight};
}

struct Change {
  HWND dialog;
  HFONT font;
  SIZE from;
  SIZE to;

  int Across(LONG x) const noexcept { return MulDiv(x, to.cx, from.cx); }
  int Down(LONG y) const noexcept { return MulDiv(y, to.cy, from.cy); }
};

BOOL CALLBACK GiveTo(HWND control, LPARAM what) {
  const auto& change = *reinterpret_cast<const Change*>(what);
  if (GetParent(control) != change.dialog) return TRUE;
  RECT place{};
  GetWindowRect(control, &place);
  MapWindowPoints(nullptr, change.dialog, reinterpret_cast<POINT*>(&place), 2);
  SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(change.font), TRUE);
  MoveWindow(control, change.Across(place.left), change.Down(place.top),
             change.Across(place.right - place.left), change.Down(place.bottom - place.top), TRUE);
  return TRUE;
}

}  // namespace

SIZE GiveFont(HWND dialog, HFONT font, SIZE size) noexcept {
  const HWND control = GetWindow(dialog, GW_CHILD);
  const auto present = reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0));
  const Change change{dialog, font, LetterOf(present), LetterOf(font)};
  if (!font || change.from.cx == 0 || change.from.cy == 0) return size;
  EnumChildWindows(dialog, &GiveTo, reinterpret_cast<LPARAM>(&change));
  return {change.Across(size.cx), change.Down(size.cy)};
}

}  // namespace qrn::design
