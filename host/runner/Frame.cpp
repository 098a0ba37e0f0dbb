#include "host/runner/Frame.h"

#include "host/runner/Form.h"
#include "host/runner/Painting.h"

namespace qrn::host {
namespace {

// Controls look through a frame to the form behind it when its window is of this class.
constexpr wchar_t kFrameClass[] = L"ThunderRTFrame";
constexpr int kCaptionIndent = 8;
constexpr int kCaptionGap = 2;

void RegisterOnce() {
  WNDCLASSEXW kind{};
  kind.cbSize = sizeof kind;
  kind.style = CS_DBLCLKS;
  kind.lpfnWndProc = DefWindowProcW;
  kind.hInstance = GetModuleHandleW(nullptr);
  kind.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
  kind.lpszClassName = kFrameClass;
  RegisterClassExW(&kind);  // a second time it is there already
}

}  // namespace

bool Frame::Create() {
  RegisterOnce();
  return WindowPiece::Create();
}

WindowPiece::WindowKind Frame::Kind() const {
  return {kFrameClass, WS_CLIPCHILDREN, WS_EX_CONTROLPARENT};
}

void Frame::DrawBox(HDC dc, RECT area) {
  const ole::Selected font(dc, FontHandle());
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
  form().DrawPieces(this, paint.dc());
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
  if (const auto done = form().OnHolderMessage(this, message, wParam, lParam)) {
    RaiseMouse(message, wParam,
               {static_cast<int16_t>(LOWORD(lParam)), static_cast<int16_t>(HIWORD(lParam))});
    if (message == WM_LBUTTONUP) Raise(L"Click");
    if (message == WM_LBUTTONDBLCLK) Raise(L"DblClick");
    return done;
  }
  return std::nullopt;
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
