#include "host/runner/furniture/Label.h"

#include <utility>

#include "host/runner/Form.h"
#include "host/runner/Painting.h"

namespace qrn::host {
namespace {

constexpr UINT kDrawnAlignments[] = {DT_LEFT, DT_RIGHT, DT_CENTER};

}  // namespace

UINT Label::DrawFlags() const noexcept {
  UINT flags = kDrawnAlignments[static_cast<int>(look().alignment)] | DT_EXPANDTABS;
  if (!look().useMnemonic) flags |= DT_NOPREFIX;
  // A label that fits itself breaks lines only when it is told to keep its width.
  if (!look().autoSize || look().wordWrap) flags |= DT_WORDBREAK;
  return flags;
}

bool Label::Create() {
  FitSize();
  drawnAt_ = Place();
  return true;
}

void Label::FitSize() {
  if (!look().autoSize) return;
  const com::WindowDc dc(nullptr);
  const com::Selected font(dc.get(), FontHandle());
  RECT place = Place();
  OffsetRect(&place, -place.left, -place.top);
  DrawTextW(dc.get(), look().text.c_str(), -1, &place, DrawFlags() | DT_CALCRECT);
  const int border = look().borderStyle != 0 ? 2 : 0;
  if (!look().wordWrap) bounds_.width = ToTwips(place.right + border);
  bounds_.height = ToTwips(place.bottom + border);
}

void Label::Draw(HDC dc) {
  RECT place = Place();
  if (!look().transparent) FillWith(dc, place, look().backColor);
  if (look().borderStyle != 0) {
    DrawEdge(dc, &place, look().sunken ? EDGE_SUNKEN : BDR_SUNKENOUTER,
             BF_RECT | BF_ADJUST | (look().sunken ? 0 : BF_MONO));
  }
  const com::Selected font(dc, FontHandle());
  SetBkMode(dc, TRANSPARENT);
  if (look().enabled) {
    SetTextColor(dc, ColourOf(look().foreColor));
  } else {
    SetTextColor(dc, GetSysColor(COLOR_GRAYTEXT));
  }
  DrawTextW(dc, look().text.c_str(), -1, &place, DrawFlags());
}

void Label::Uncover() noexcept {
  if (HWND holder = ParentWindow()) InvalidateRect(holder, &drawnAt_, FALSE);
}

void Label::Destroy() noexcept {
  const HWND spoken = std::exchange(spoken_, nullptr);
  if (IsWindow(spoken)) DestroyWindow(spoken);
}

void Label::StandBefore(HWND control) {
  spoken_ = CreateWindowExW(0, L"STATIC", look().text.c_str(), WS_CHILD, 0, 0, 0, 0,
                            GetParent(control), nullptr, GetModuleHandleW(nullptr), nullptr);
  const HWND before = GetWindow(control, GW_HWNDPREV);
  SetWindowPos(spoken_, before ? before : HWND_TOP, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void Label::OnLook() {
  if (spoken_) SetWindowTextW(spoken_, look().text.c_str());
  FitSize();
  OnMoved();
}

void Label::OnMoved() {
  Uncover();
  drawnAt_ = Place();
  Uncover();
}

void Label::OnShown() { Uncover(); }

void Label::OnMouse(UINT message, WPARAM wParam, POINT point) {
  if (!look().enabled) return;
  const Com<FormControl> alive(this);
  const RECT place = Place();
  const bool inside = point.x >= 0 && point.y >= 0 && point.x < place.right - place.left &&
                      point.y < place.bottom - place.top;
  RaiseMouse(message, wParam, point);
  if (message == WM_LBUTTONUP && inside) Raise(L"Click");
  if (message == WM_LBUTTONDBLCLK) Raise(L"DblClick");
}

MnemonicUse Label::TryMnemonic(const MSG& message, wchar_t key) {
  return IsMnemonic(message, key) ? MnemonicUse::NextStop : MnemonicUse::None;
}

MemberTable Label::OwnMembers() const {
  static constexpr MemberEntry kMembers[] = {
      Member<&Furniture::Caption>(L"Caption", kProperty, kValueMember),
      Member<&Furniture::Alignment>(L"Alignment", kProperty)};
  return kMembers;
}

}  // namespace qrn::host
