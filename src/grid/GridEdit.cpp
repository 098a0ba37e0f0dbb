#include "grid/GridEdit.h"

#include "com/Text.h"
#include "com/WindowText.h"
#include "controls/EditWindow.h"

namespace qrn {
namespace {

constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | ES_AUTOHSCROLL;

}  // namespace

bool GridEdit::Make(HWND parent, const com::Com<IFontDisp>& font) {
  if (!window_.Create({L"Edit", kStyle, 0, {}}, parent, RECT{})) return false;
  Hide();
  SetFont(font);
  return true;
}

bool GridEdit::IsShown() const noexcept {
  return get() && (GetWindowLongW(get(), GWL_STYLE) & WS_VISIBLE);
}

void GridEdit::SetFont(const com::Com<IFontDisp>& font) {
  if (!get()) return;
  com::FontInUse next(font);
  SendMessageW(get(), WM_SETFONT, reinterpret_cast<WPARAM>(next.get()), TRUE);
  font_ = std::move(next);
}

void GridEdit::PlaceOn(const GridRect& rect, const char* text, int32_t maxBytes, int32_t imeMode) {
  maxBytes_ = maxBytes;
  imeMode_ = imeMode;
  SendMessageW(get(), EM_SETLIMITTEXT, static_cast<WPARAM>(maxBytes), 0);
  if (HasFocus()) ApplyInputMethod();
  MoveWindow(get(), rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, TRUE);
  ShowWindow(get(), SW_SHOWNA);
  SetWindowTextW(get(), com::WidenToBstr(text != nullptr ? text : "").c_str());
  editwindow::Select(get(), {0, static_cast<DWORD>(-1)});
  if (!HasFocus()) SetFocus(get());
}

void GridEdit::Hide() noexcept {
  if (get()) ShowWindow(get(), SW_HIDE);
}

std::string GridEdit::Text() const {
  return get() ? com::NarrowText(com::Bstr(com::TextOfWindow(get()))) : std::string();
}

EditCaret GridEdit::Caret() const noexcept {
  const editwindow::Selection selection = editwindow::GetSelection(get());
  return {selection.start, selection.end, static_cast<uint32_t>(GetWindowTextLengthW(get()))};
}

// Enter does nothing: the window would beep at it.
bool GridEdit::LimitTyping(com::Message& message) {
  const auto typed = static_cast<wchar_t>(message.wParam);
  return typed == L'\r' || editwindow::RefusesTyped(get(), typed, maxBytes_);
}

bool GridEdit::LimitPasting(com::Message&) { return editwindow::PastesWithin(get(), maxBytes_); }

bool GridEdit::LimitReplacing(com::Message& message) {
  const auto replace = [&](const wchar_t* fits) {
    message.result = window_.CallOriginal(
        {message.window, message.id, message.wParam, reinterpret_cast<LPARAM>(fits)});
  };
  return editwindow::ReplacesWithin(get(), reinterpret_cast<const wchar_t*>(message.lParam),
                                    maxBytes_, replace);
}

// The mode from outside is read once, with the first column that has a mode of its own, and put
// back when the box is left: a column without one keeps that of the column before.
void GridEdit::ApplyInputMethod() noexcept {
  if (imeMode_ == 0) return;
  if (imeEntered_) {
    TheInputMethod().Apply(get(), imeMode_);
  } else {
    inputMethod_.Enter(get(), imeMode_);
  }
  imeEntered_ = true;
}

void GridEdit::FocusCame() noexcept { ApplyInputMethod(); }

void GridEdit::FocusWent() noexcept {
  if (std::exchange(imeEntered_, false)) inputMethod_.Leave(get(), imeMode_ != 0 ? imeMode_ : 1);
}

}  // namespace qrn
