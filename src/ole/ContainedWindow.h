// The system's window inside a control's own: an "Edit", "Button", "ComboBox", "ListBox" or
// "ScrollBar" whose messages the control sees first. Its class is a copy of the system's under the
// name "ATL:" and the class name, with the procedure replaced.
//
// The window is a wide one: typed Japanese arrives as one message a character.
#pragma once

#include <string>

#include "ole/Kit.h"

namespace qrn::ole {

class VisibleControl;

// What the system class is called, how the window looks, and what it first says.
struct ContainedDescription {
  const wchar_t* baseClass;
  DWORD style;
  DWORD exStyle = 0;
  std::wstring text;
};

class ContainedWindow {
 public:
  explicit ContainedWindow(VisibleControl& control) noexcept : control_(control) {}
  ContainedWindow(const ContainedWindow&) = delete;
  ContainedWindow& operator=(const ContainedWindow&) = delete;
  ~ContainedWindow() { Destroy(); }

  HWND get() const noexcept { return window_; }
  bool Create(const ContainedDescription& description, HWND parent, const RECT& place);
  void Destroy() noexcept;
  // Runs the system class's own procedure.
  LRESULT CallOriginal(const Message& message) noexcept;
  WNDPROC original() const noexcept { return original_; }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam);
  LRESULT Dispatch(Message& message) noexcept;

  VisibleControl& control_;
  HWND window_ = nullptr;
  WNDPROC original_ = nullptr;
};

}  // namespace qrn::ole
