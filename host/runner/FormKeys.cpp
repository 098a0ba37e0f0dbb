// Keys on a form: who gets them first, the tab order, the keys of captions.
#include <algorithm>

#include "host/container/Text.h"
#include "host/runner/Form.h"
#include "host/runner/Modifiers.h"
#include "host/runner/RaisedArguments.h"

namespace qrn::host {
namespace {

bool IsKeyMessage(UINT message) noexcept { return message >= WM_KEYFIRST && message <= WM_KEYLAST; }

struct KeyEvent {
  UINT message;
  const wchar_t* event;
};

constexpr KeyEvent kKeyEvents[] = {
    {WM_KEYDOWN, L"KeyDown"}, {WM_KEYUP, L"KeyUp"}, {WM_CHAR, L"KeyPress"}};

}  // namespace

std::vector<FormControl*> Form::TabOrder() const {
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

FormControl* Form::ControlOf(HWND window) const noexcept {
  FormControl* found = nullptr;
  for (const Com<FormControl>& control : controls_) {
    HWND own = control->Window();
    if (!own || (own != window && !IsChild(own, window))) continue;
    if (!found || control->LiesIn(*found)) found = control.get();
  }
  return found;
}

// The stops in the order in which the Tab key comes to them from `now` on, `now` itself last.
std::vector<FormControl*> Form::StopsAfter(const FormControl* now, bool backwards) const {
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

void Form::FocusNext(bool backwards) {
  const FormControl* now = ControlOf(GetFocus());
  for (FormControl* next : StopsAfter(now ? now : active_, backwards)) {
    if (next->TakeFocus()) return;
  }
}

// What has the key of a label or frame in its caption hands the keyboard to what follows it.
void Form::FocusAfter(const FormControl& piece) {
  for (FormControl* control : TabOrder()) {
    if (control->tabIndex() > piece.tabIndex() && control->TakeFocus()) return;
  }
}

// The form's window has the keyboard: it is for the control that had it last, or the next one.
void Form::HandKeyboardOn() {
  if (state_ != State::Loaded) return;
  if (active_ && active_->CanTakeFocus() && active_->TakeFocus()) return;
  FocusNext(false);
}

void Form::KeepKeyboard() {
  if (state_ != State::Loaded || GetActiveWindow() != window_) return;
  const HWND focus = GetFocus();
  const FormControl* holder = ControlOf(focus);
  if (!focus || (holder && !holder->CanTakeFocus())) ::SetFocus(window_);
}

bool Form::PreviewKey(MSG& message) {
  if (!look_.keyPreview) return false;
  for (const KeyEvent& row : kKeyEvents) {
    if (row.message != message.message) continue;
    int16_t key = static_cast<int16_t>(message.wParam);
    int16_t shift = KeyModifiers();
    if (row.message == WM_CHAR) {
      RaisedArguments pressed{ByReference(key)};
      RaiseOwn(row.event, pressed.get());
    } else {
      RaisedArguments pressed{ByReference(key), ByReference(shift)};
      RaiseOwn(row.event, pressed.get());
    }
    message.wParam = static_cast<uint16_t>(key);
    return key == 0;
  }
  return false;
}

bool Form::PreTranslate(MSG& message) {
  if (!window_ || (message.hwnd != window_ && !IsChild(window_, message.hwnd))) return false;
  if (IsDesign()) return TakeDesignInput(message);
  if (!IsKeyMessage(message.message)) return false;
  const Com<Form> alive(this);
  if (PreviewKey(message)) return true;
  if (!frame_) return true;
  // The active control sees its keys first, and asks the form for those it has no use for.
  const Com<IOleInPlaceActiveObject> active = frame_->Active();
  FormControl* focused = ControlOf(message.hwnd);
  if (active && focused && focused->HostedObject()) {
    return active->TranslateAccelerator(&message) == S_OK;
  }
  return TranslateKey(message);
}

bool Form::TranslateKey(const MSG& message) {
  if (state_ != State::Loaded) return false;
  if (message.message == WM_SYSCHAR || message.message == WM_SYSKEYDOWN) {
    return TryMnemonic(message);
  }
  if (message.message != WM_KEYDOWN) return false;
  FormControl* focused = ControlOf(message.hwnd);
  switch (message.wParam) {
    case VK_TAB:
      if (GetKeyState(VK_CONTROL) < 0) return false;
      FocusNext(GetKeyState(VK_SHIFT) < 0);
      return true;
    case VK_RETURN:
      return !(focused && focused->WantsEnter()) && PressKeyButton(false);
    case VK_ESCAPE:
      return PressKeyButton(true);
    default:
      return false;
  }
}

bool Form::PressKeyButton(bool cancel) {
  for (const Com<FormControl>& control : controls_) {
    const bool wanted = cancel ? control->IsCancel() : control->IsDefault();
    if (!wanted || !control->CanTakeFocus()) continue;
    const Com<FormControl> pressed = control;
    pressed->Press();
    return true;
  }
  return false;
}

bool Form::TryMnemonic(const MSG& message) {
  const auto key = static_cast<wchar_t>(message.wParam);
  const std::vector<Com<FormControl>> controls = controls_;
  for (const Com<FormControl>& control : controls) {
    switch (control->TryMnemonic(message, key)) {
      case MnemonicUse::None:
        continue;
      case MnemonicUse::Done:
        return true;
      case MnemonicUse::NextStop:
        FocusAfter(*control);
        return true;
    }
  }
  return false;
}

}  // namespace qrn::host
