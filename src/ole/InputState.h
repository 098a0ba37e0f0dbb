// Keys and mouse buttons as the events tell them.
#pragma once

#include <windows.h>

#include <cstdint>

namespace qrn::ole {

// Of KeyDown and KeyUp, and of IOleControlSite::TranslateAccelerator: 1 Shift, 2 Ctrl, 4 Alt, as
// the keyboard stands now.
int16_t KeyShift() noexcept;
// Of the mouse events, from a mouse message's flags: 2 Shift, 1 Ctrl. The other way round than for
// keys: programs are used to it.
int16_t MouseShift(WPARAM flags) noexcept;
// 1 left, 2 right.
int16_t MouseButton(WPARAM flags) noexcept;

// What KeyPress tells of a WM_CHAR: the character's code in the ANSI code page, two bytes as one
// number, the lead byte high. Codes up to 255 stand for themselves.
int16_t KeyAsciiOf(WPARAM character) noexcept;
// The character for what a handler left in KeyAscii.
WPARAM CharacterOf(int16_t keyAscii) noexcept;

}  // namespace qrn::ole
