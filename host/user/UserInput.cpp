#include "host/user/UserInput.h"

#include <vector>

namespace qrn::host {
namespace {

constexpr DWORD kBetweenMs = 20;
constexpr int kDragSteps = 8;

INPUT KeyInput(WORD virtualKey, bool up) noexcept {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = virtualKey;
  input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(virtualKey, MAPVK_VK_TO_VSC));
  input.ki.dwFlags = up ? KEYEVENTF_KEYUP : 0;
  const bool extended = (virtualKey >= VK_PRIOR && virtualKey <= VK_DOWN) ||
                        virtualKey == VK_INSERT || virtualKey == VK_DELETE;
  if (extended) input.ki.dwFlags |= KEYEVENTF_EXTENDEDKEY;
  return input;
}

INPUT CharacterInput(wchar_t character, bool up) noexcept {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wScan = character;
  input.ki.dwFlags = KEYEVENTF_UNICODE | (up ? KEYEVENTF_KEYUP : 0);
  return input;
}

void Send(std::vector<INPUT> inputs) {
  SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

void SendMouse(DWORD flags, int turn = 0) {
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = flags;
  input.mi.mouseData = static_cast<DWORD>(turn);
  Send({input});
}

// Holds keys down as long as it lives.
class HeldKeys {
 public:
  HeldKeys(bool shift, bool control, bool alt) {
    if (control) Hold(VK_CONTROL);
    if (shift) Hold(VK_SHIFT);
    if (alt) Hold(VK_MENU);
  }
  HeldKeys(const HeldKeys&) = delete;
  HeldKeys& operator=(const HeldKeys&) = delete;
  ~HeldKeys() {
    for (auto key = keys_.rbegin(); key != keys_.rend(); ++key) Send({KeyInput(*key, true)});
  }

 private:
  void Hold(WORD key) {
    keys_.push_back(key);
    Send({KeyInput(key, false)});
  }
  std::vector<WORD> keys_;
};

void PressPlain(WORD virtualKey) {
  Send({KeyInput(virtualKey, false)});
  Send({KeyInput(virtualKey, true)});
}

}  // namespace

void PressKey(const form::KeyChord& chord) {
  const HeldKeys held(chord.shift, chord.control, chord.alt);
  PressPlain(chord.virtualKey);
}

void TypeText(std::wstring_view text) {
  for (const wchar_t character : text) {
    const SHORT key = character < 0x80 ? VkKeyScanW(character) : SHORT{-1};
    if (key == -1 || (key & 0x600) != 0) {
      Send({CharacterInput(character, false), CharacterInput(character, true)});
    } else {
      const HeldKeys held((key & 0x100) != 0, false, false);
      PressPlain(LOBYTE(key));
    }
    Sleep(kBetweenMs / 4);
  }
}

POINT CentreOf(const RECT& part) noexcept {
  return {(part.left + part.right) / 2, (part.top + part.bottom) / 2};
}

void MoveMouse(POINT to) {
  SetCursorPos(to.x, to.y);
  Sleep(kBetweenMs);
}

void ClickMouse(POINT at, const ClickKind& kind) {
  MoveMouse(at);
  const HeldKeys held(kind.shift, kind.control, false);
  for (int i = 0; i < (kind.twice ? 2 : 1); ++i) {
    SendMouse(kind.right ? MOUSEEVENTF_RIGHTDOWN : MOUSEEVENTF_LEFTDOWN);
    Sleep(kBetweenMs);
    SendMouse(kind.right ? MOUSEEVENTF_RIGHTUP : MOUSEEVENTF_LEFTUP);
  }
}

// The wheel across counts the other way round.
void TurnWheel(bool across, bool away) {
  SendMouse(across ? MOUSEEVENTF_HWHEEL : MOUSEEVENTF_WHEEL,
            away == across ? -WHEEL_DELTA : WHEEL_DELTA);
  Sleep(kBetweenMs);
}

void DragMouse(POINT from, POINT to, const ClickKind& kind) {
  const HeldKeys held(kind.shift, kind.control, false);
  MoveMouse(from);
  SendMouse(MOUSEEVENTF_LEFTDOWN);
  for (int i = 1; i <= kDragSteps; ++i) {
    MoveMouse(
        {from.x + (to.x - from.x) * i / kDragSteps, from.y + (to.y - from.y) * i / kDragSteps});
  }
  SendMouse(MOUSEEVENTF_LEFTUP);
}

}  // namespace qrn::host
