// What a form does with the messages of its window.
#include <windows.h>
#include <windowsx.h>

#include "host/runner/Form.h"
#include "host/runner/InputEvents.h"
#include "host/runner/Painting.h"
#include "host/runner/Program.h"

namespace qrn::host {
namespace {

constexpr UINT kShowPages = WM_APP + 1;  // wParam: the control's place in the list

}  // namespace

struct Form::WindowRow {
  UINT message;
  std::optional<LRESULT> (Form::*run)(WPARAM wParam, LPARAM lParam);
};

const Form::WindowRow Form::kWindowRows[] = {
    {WM_CLOSE, &Form::OnClose},       {WM_QUERYENDSESSION, &Form::OnSessionEnd},
    {kShowPages, &Form::OnShowPages}, {WM_ERASEBKGND, &Form::OnEraseBackground},
    {WM_PAINT, &Form::OnPaint},       {WM_SIZE, &Form::OnSize},
    {WM_ACTIVATE, &Form::OnActivate}, {WM_SETFOCUS, &Form::OnSetFocus},
    {WM_ENABLE, &Form::OnEnable},     {WM_SETCURSOR, &Form::OnSetCursor},
};

std::optional<LRESULT> Form::OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (const auto done = Pieces::OnChildMessage(message, wParam, lParam)) return done;
  if (IsPointMessage(message)) {
    const POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    if (!pieces_.OnMouse(nullptr, message, wParam, point)) OnMouse(message, wParam, point);
    return 0;
  }
  for (const WindowRow& row : kWindowRows) {
    if (row.message == message) return (this->*row.run)(wParam, lParam);
  }
  return std::nullopt;
}

std::optional<LRESULT> Form::OnClose(WPARAM, LPARAM) {
  Unload(UnloadCause::ControlMenu);
  return 0;
}

std::optional<LRESULT> Form::OnSessionEnd(WPARAM, LPARAM) { return Unload(UnloadCause::System); }

void Form::PostShowPages(const FormControl& control) const noexcept {
  for (size_t i = 0; i < controls_.size(); ++i) {
    if (controls_.list()[i].get() == &control) PostMessageW(Window(), kShowPages, i, 0);
  }
}

std::optional<LRESULT> Form::OnShowPages(WPARAM place, LPARAM) {
  if (place < controls_.size()) ShowPages(*controls_.list()[place]);
  return 0;
}

std::optional<LRESULT> Form::OnEraseBackground(WPARAM, LPARAM) { return 1; }

std::optional<LRESULT> Form::OnPaint(WPARAM, LPARAM) {
  const BufferedPaint paint(Window());
  FillWith(paint.dc(), paint.area(), look_.backColor);
  if (stage_) stage_->DrawGround(paint.dc(), paint.area());
  pieces_.Draw(nullptr, paint.dc());
  if (IsLoaded()) code_.Raise(L"Paint");
  return 0;
}

std::optional<LRESULT> Form::OnSetCursor(WPARAM, LPARAM) {
  if (!stage_) return std::nullopt;
  stage_->SetPointer();
  return TRUE;
}

std::optional<LRESULT> Form::OnSize(WPARAM, LPARAM) {
  if (state_ == State::Loaded || state_ == State::Loading) code_.Raise(L"Resize");
  return 0;
}

std::optional<LRESULT> Form::OnActivate(WPARAM how, LPARAM) {
  if (!IsLoaded()) return 0;
  const bool active = LOWORD(how) != WA_INACTIVE;
  if (active && program_) program_->OnActivated(*this);
  // The window hands the keyboard on to whatever had it.
  if (active && !IsChild(Window(), GetFocus())) ::SetFocus(Window());
  code_.Raise(active ? L"Activate" : L"Deactivate");
  return 0;
}

std::optional<LRESULT> Form::OnSetFocus(WPARAM, LPARAM) {
  keyboard_.HandOn();
  return 0;
}

// A message box without an owner may end with no window active: who was in front is so again.
std::optional<LRESULT> Form::OnEnable(WPARAM enabled, LPARAM) {
  if (enabled && !GetActiveWindow() && program_ && program_->IsFront(*this)) {
    SetForegroundWindow(Window());
  }
  return 0;
}

void Form::OnMouse(UINT message, WPARAM wParam, POINT point) {
  if (!IsLoaded()) return;
  const double units = look_.UnitsPerPixel();
  RaiseMouseEvent(
      message, wParam, point.x * units, point.y * units,
      [this](const wchar_t* event, DISPPARAMS& arguments) { code_.Raise(event, arguments); });
  if (message == WM_LBUTTONUP && IsLoaded()) code_.Raise(L"Click");
  if (message == WM_LBUTTONDBLCLK) code_.Raise(L"DblClick");
}

}  // namespace qrn::host
