// What a window that holds others (the form, a frame) does for the furniture on it: pieces without
// a window are drawn there and get their mouse there, those with one send it notices and questions
// for colours.
#pragma once

#include <windows.h>

#include <optional>

#include "host/runner/ControlSet.h"

namespace qrn::host {

// `container` is the control that holds them, null for the form itself.
class Pieces {
 public:
  explicit Pieces(const ControlSet& controls) noexcept : controls_(controls) {}

  void Draw(const FormControl* container, HDC dc) const;
  // A notice of, or a question for the colours of, a piece with a window. Nothing if the message is
  // neither, or the window is no piece's.
  static std::optional<LRESULT> OnChildMessage(UINT message, WPARAM wParam, LPARAM lParam);
  // A mouse message of the holder; the point in its client area. True if it went to a piece: to the
  // one under the mouse, from button down to button up to the one that was pressed.
  bool OnMouse(const FormControl* container, UINT message, WPARAM wParam, POINT point);
  // The pieces are going.
  void Forget() noexcept { pressed_ = nullptr; }

 private:
  FormControl* At(const FormControl* container, POINT point) const noexcept;

  const ControlSet& controls_;
  FormControl* pressed_ = nullptr;
};

}  // namespace qrn::host
