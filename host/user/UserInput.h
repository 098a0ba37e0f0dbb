// Keys and mouse as if pressed and moved by hand. Input goes to whatever window the system gives
// it.
#pragma once

#include <windows.h>

#include <string_view>

#include "host/form/KeyNames.h"

namespace qrn::host {

void PressKey(const form::KeyChord& chord);

// Characters of the keyboard by their keys, others (kanji) as the input method would give them.
void TypeText(std::wstring_view text);

struct ClickKind {
  bool right = false;
  bool twice = false;
  bool shift = false;
  bool control = false;
};

POINT CentreOf(const RECT& part) noexcept;

// Screen positions in pixels.
void MoveMouse(POINT to);
void ClickMouse(POINT at, const ClickKind& kind);
// One notch of a wheel, to the user (down, right) or away.
void TurnWheel(bool across, bool away);
// Presses the left button at `from`, moves in steps, lets go at `to`; of `kind` the keys that are
// held meanwhile count.
void DragMouse(POINT from, POINT to, const ClickKind& kind = {});

}  // namespace qrn::host
