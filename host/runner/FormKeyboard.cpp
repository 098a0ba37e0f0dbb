#include "host/runner/FormKeyboard.h"

#include <algorithm>
#include <utility>

#include "host/runner/InputEvents.h"

namespace qrn::host {

void FormKeyboard::End() noexcept {
  live_ = shownBefore_ = false;
  active_ = told_ = nullptr;
}

std::vector<FormControl*> FormKeyboard::TabOrder() const {
  std::vector<FormControl*> order;
  for (const Com<FormControl>& control : controls_) {
    if (control->IsTabStop()) order.push_back(control.get());
  }
  std::stable_sort(order.begin(), order.end(),
                   [](const FormControl* left, const FormControl* right) {
                     return left->tabIndex() < right->tabIndex();
                   });
  return order;
}

// The stops in the order in which the Tab key comes to them from `now` on, `now` itself last.
std::vector<FormControl*> FormKeyboard::StopsAfter(const FormControl* now, bool backwards) const {
  std::vector<FormControl*> order = TabOrder();
  if (backwards) std::reverse(order.begin(), order.end());
  auto first = std::find(order.begin(), order.end(), now);
  if (first != order.end()) {
    ++first;
  } else if (now) {
    // A control that is no tab stop goes on from its index.
    first = std::find_if(order.begin(), order.end(), [&](const FormControl* control) {
      return backwards ? control->tabIndex() < now->tabIndex()
                       : control->tabIndex() > now->tabIndex();
    });
  }
  std::rotate(order.begin(), first, order.end());
  return order;
}

void FormKeyboard::Next(bool backwards) {
  // There no stop keeps the keyboard: it would end at the last one.
  if (IsIconic(window_.get())) return;
  const FormControl* now = controls_.Of(GetFocus());
  for (FormControl* next : StopsAfter(now ? now : active_, backwards)) {
    if (next->TakeFocus()) return;
  }
}

// What has the key of a label or frame in its caption hands the keyboard to what follows it.
void FormKeyboard::After(const FormControl& piece) {
  for (FormControl* control : TabOrder()) {
    if (control->tabIndex() > piece.tabIndex() && control->TakeFocus()) return;
  }
}

void FormKeyboard::OnShown() {
  if (!window_.get() || std::exchange(shownBefore_, true)) return;
  if (!active_ && GetForegroundWindow() == window_.get()) Next(false);
  const std::vector<FormControl*> order = TabOrder();
  if (!active_ && !order.empty()) active_ = order.front();
}

void FormKeyboard::OnActive(FormControl& control) {
  if (active_ == &control) return;
  FormControl* before = std::exchange(active_, &control);
  if (before) before->GiveUpFocus();
}

void FormKeyboard::OnFocus(FormControl& control) {
  if (!live_) return;
  control.OnArrival();
  OnActive(control);
  Tell();
}

// LostFocus and GotFocus for where the keyboard is now. A handler may show a box and send the
// keyboard back: only where it comes to rest is told of it.
void FormKeyboard::Tell() {
  if (std::exchange(telling_, true)) return;
  DISPPARAMS none{};
  while (live_ && active_ && told_ != active_) {
    FormControl* next = active_;
    if (FormControl* before = std::exchange(told_, nullptr)) {
      code_.Fire(*before, L"LostFocus", none);
      continue;
    }
    told_ = next;
    code_.Fire(*next, L"GotFocus", none);
  }
  telling_ = false;
}

void FormKeyboard::HandOn() {
  if (!live_) return;
  if (active_ && active_->CanTakeFocus() && active_->TakeFocus()) return;
  Next(false);
}

void FormKeyboard::Keep() {
  if (!live_ || GetActiveWindow() != window_.get()) return;
  const HWND focus = GetFocus();
  const FormControl* holder = controls_.Of(focus);
  if (!focus || (holder && !holder->CanTakeFocus())) ::SetFocus(window_.get());
}

bool FormKeyboard::Preview(MSG& message) {
  const auto raise = [this](const wchar_t* event, DISPPARAMS& arguments) {
    code_.Raise(event, arguments);
  };
  const WPARAM left = RaiseKeyEvent(message.message, message.wParam, raise);
  const bool taken = left != message.wParam && left == 0;
  message.wParam = left;
  return taken;
}

bool FormKeyboard::PreTranslate(MSG& message, bool preview) {
  if (preview && Preview(message)) return true;
  if (!window_.frame()) return true;
  // The active control sees its keys first, and asks the form for those it has no use for.
  const Com<IOleInPlaceActiveObject> active = window_.frame()->Active();
  const FormControl* focused = controls_.Of(message.hwnd);
  if (active && focused && focused->HostedObject()) {
    return active->TranslateAccelerator(&message) == S_OK;
  }
  return Translate(message);
}

bool FormKeyboard::Translate(const MSG& message) {
  if (!live_) return false;
  if (message.message == WM_SYSCHAR || message.message == WM_SYSKEYDOWN) {
    return TryMnemonic(message);
  }
  if (message.message != WM_KEYDOWN) return false;
  const FormControl* focused = controls_.Of(message.hwnd);
  switch (message.wParam) {
    case VK_TAB:
      if (GetKeyState(VK_CONTROL) < 0) return false;
      Next(GetKeyState(VK_SHIFT) < 0);
      return true;
    case VK_RETURN:
      return !(focused && focused->WantsEnter()) && PressButton(&FormControl::IsDefault);
    case VK_ESCAPE:
      return PressButton(&FormControl::IsCancel);
    default:
      return false;
  }
}

bool FormKeyboard::PressButton(bool (FormControl::*isWanted)() const) {
  for (const Com<FormControl>& control : controls_) {
    if (!(control.get()->*isWanted)() || !control->CanTakeFocus()) continue;
    const Com<FormControl> pressed = control;
    pressed->Press();
    return true;
  }
  return false;
}

bool FormKeyboard::TryMnemonic(const MSG& message) {
  const auto key = static_cast<wchar_t>(message.wParam);
  const std::vector<Com<FormControl>> controls = controls_.list();
  for (const Com<FormControl>& control : controls) {
    switch (control->TryMnemonic(message, key)) {
      case MnemonicUse::None:
        continue;
      case MnemonicUse::Done:
        return true;
      case MnemonicUse::NextStop:
        After(*control);
        return true;
    }
  }
  return false;
}

}  // namespace qrn::host
