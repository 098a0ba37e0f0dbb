#include "ole/InputState.h"

namespace qrn::ole {

int16_t KeyShift() noexcept {
  const auto held = [](int key, int bit) { return GetKeyState(key) < 0 ? bit : 0; };
  return static_cast<int16_t>(held(VK_SHIFT, 1) | held(VK_CONTROL, 2) | held(VK_MENU, 4));
}

int16_t MouseShift(WPARAM flags) noexcept {
  return static_cast<int16_t>((flags & MK_SHIFT ? 2 : 0) | (flags & MK_CONTROL ? 1 : 0));
}

int16_t MouseButton(WPARAM flags) noexcept {
  return static_cast<int16_t>((flags & MK_LBUTTON ? 1 : 0) | (flags & MK_RBUTTON ? 2 : 0));
}

int16_t KeyAsciiOf(WPARAM character) noexcept {
  if (character <= 0xFF) return static_cast<int16_t>(character);
  const auto wide = static_cast<wchar_t>(character);
  char bytes[4] = {};
  const int count = WideCharToMultiByte(CP_ACP, 0, &wide, 1, bytes, sizeof bytes, nullptr, nullptr);
  const auto byte = [&](int i) { return static_cast<uint8_t>(bytes[i]); };
  return static_cast<int16_t>(count == 2 ? byte(0) << 8 | byte(1) : byte(0));
}

WPARAM CharacterOf(int16_t keyAscii) noexcept {
  const auto code = static_cast<uint16_t>(keyAscii);
  if (code < 0x80) return code;
  const char bytes[2] = {static_cast<char>(code > 0xFF ? code >> 8 : code),
                         static_cast<char>(code & 0xFF)};
  wchar_t wide = 0;
  MultiByteToWideChar(CP_ACP, 0, bytes, code > 0xFF ? 2 : 1, &wide, 1);
  return wide;
}

}  // namespace qrn::ole
