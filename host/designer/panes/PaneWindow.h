// A window of a pane's own, and the system's controls on it.
#pragma once

#include <windows.h>

#include <string>

#include "com/Handles.h"
#include "com/Message.h"

namespace qrn::designer {

// A child window whose messages come to the object. The window dies with the object, or before it
// with its parent.
class PaneWindow {
 public:
  PaneWindow() = default;
  PaneWindow(const PaneWindow&) = delete;
  PaneWindow& operator=(const PaneWindow&) = delete;

 protected:
  virtual ~PaneWindow() { Close(); }

  // Throws com::Failure where the system gives none.
  void Make(HWND parent, DWORD style);
  // For who has controls on it: before its own parts go.
  void Close() noexcept;
  HWND window() const noexcept { return window_; }
  SIZE ClientSize() const noexcept;

  // True if the message ends with it.
  virtual bool OnMessage(com::Message& message) = 0;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  HWND window_ = nullptr;
};

// A visible control of the system's in a window; `font` may be null.
HWND MakeControl(HWND parent, const wchar_t* className, DWORD style, int id, HFONT font);

void PlaceWindow(HWND window, const RECT& place) noexcept;
void SetText(HWND window, const std::string& utf8);
std::string TextOf(HWND window);  // UTF-8

// At the end of a combo box.
void AddLine(HWND comboBox, const std::string& utf8);

com::GdiFont BoldOf(HFONT font) noexcept;
// Height of a line of text in the font, in pixels.
int LineHeight(HFONT font) noexcept;
// Pixels of a screen with 96 an inch on the screen that there is.
int Scaled(int pixels) noexcept;

// `inner` is `outer` or lies in it.
bool LiesIn(HWND inner, HWND outer) noexcept;

bool IsPressed(int virtualKey) noexcept;

}  // namespace qrn::designer
