#include "host/runner/furniture/Frame.h"

#include <windowsx.h>

#include "host/runner/Form.h"
#include "host/runner/InputEvents.h"
#include "host/runner/Painting.h"
#include "host/runner/WindowClass.h"

namespace qrn::host {
namespace {

// Controls look through a frame to the form behind it when its window is of this class.
constexpr wchar_t kFurnitureFrame[] = L"ThunderRTFrame";
constexpr int kCaptionIndent = 8;
constexpr int kCaptionGap = 2;

}  // namespace

bool Frame::Create() {
  RegisterWindowClass(kFurnitureFrame, DefWindowProcW);
  return WindowPiece::Create();
}

WindowPiece::WindowKind Frame::Kind() const {
  return {kFurnitureFrame, WS_CLIPCHILDREN, WS_EX_CONTROLPARENT};
}

void Frame::DrawBox(HDC dc, RECT area) {
  const com::Selected font(dc, FontHandle());
  RECT words{};
  DrawTextW(dc, look().text.c_str(), -1, &words, DT_SINGLELINE | DT_CALCRECT);
  if (look().borderStyle != 0) {
    RECT box = area;
    if (!look().text.empty()) box.top += words.bottom / 2;
    DrawEdge(dc, &box, EDGE_ETCHED, look().sunken ? BF_RECT : BF_RECT | BF_MONO);
  }
  if (look().text.empty() || look().borderStyle == 0) return;
  OffsetRect(&words, area.left + kCaptionIndent, area.top);
  const RECT behind{words.left - kCaptionGap, words.top, words.right + kCaptionGap, words.bottom};
  FillWith(dc, behind, look().backColor);
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, look().enabled ? ColourOf(look().foreColor) : GetSysColor(COLOR_GRAYTEXT));
  DrawTextW(dc, look().text.c_str(), -1, &words, DT_SINGLELINE);
}

void Frame::OnPaint() {
  const BufferedPaint paint(Window());
  FillWith(paint.dc(), paint.area(), look().backColor);
  DrawBox(paint.dc(), paint.area());
  form().pieces().Draw(this, paint.dc());
}

std::optional<LRESULT> Frame::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_ERASEBKGND) return 1;
  if (message == WM_PAINT) {
    OnPaint();
    return 0;
  }
  if (message == WM_SETFOCUS) {
    // What lies in it was hidden or disabled; the form knows who is next.
    ::SetFocus(form().Window());
    return 0;
  }
  if (const auto done = Pieces::OnChildMessage(message, wParam, lParam)) return done;
  if (!IsPointMessage(message)) return std::nullopt;
  const POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
  if (!form().pieces().OnMouse(this, message, wParam, point)) OnMouse(message, wParam, point);
  return 0;
}

void Frame::OnMouse(UINT message, WPARAM wParam, POINT point) {
  const Com<FormControl> alive(this);
  RaiseMouse(message, wParam, point);
  if (message == WM_LBUTTONUP) Raise(L"Click");
  if (message == WM_LBUTTONDBLCLK) Raise(L"DblClick");
}

MnemonicUse Frame::TryMnemonic(const MSG& message, wchar_t key) {
  return IsMnemonic(message, key) ? MnemonicUse::NextStop : MnemonicUse::None;
}

MemberTable Frame::OwnMembers() const {
  static constexpr MemberEntry kMembers[] = {
      Member<&Furniture::Caption>(L"Caption", kProperty, kValueMember)};
  return kMembers;
}

}  // namespace qrn::host
