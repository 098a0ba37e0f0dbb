// A window for property pages: tabs, OK, Cancel, Apply. It is worked by keys alone: Tab goes from
// the page's controls to the buttons and the tabs, Ctrl+Tab and Ctrl+Page Down to the next page.
#pragma once

#include <windows.h>

#include "host/container/Fonts.h"
#include "host/runner/design/FramePages.h"

namespace qrn::host {

class PropertyFrame {
 public:
  PropertyFrame(std::span<IUnknown* const> objects, ControlClasses& classes);
  PropertyFrame(const PropertyFrame&) = delete;
  PropertyFrame& operator=(const PropertyFrame&) = delete;
  ~PropertyFrame();

  bool HasPages() const noexcept { return pages_.count() > 0; }
  // Shows the pages, of which there is one at least, until the user closes them. `owner` takes no
  // input meanwhile; it may be null.
  void Run(HWND owner, const std::wstring& title);

 private:
  void MakeWindows(HWND owner, const std::wstring& title);
  void MakeTabs(const RECT& place);
  void MakeButtons(POINT rightTop);
  HWND MakeChild(const wchar_t* className, const wchar_t* text, DWORD style, RECT place, int id);
  void ShowPage(size_t place);
  void TurnPage(bool back);
  void OnCommand(int id);
  bool Apply();
  void ShowDirty();
  void HandKeyboardOn();
  bool TakesKey(MSG& message);
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  FramePages pages_;
  HWND window_ = nullptr;
  HWND tabs_ = nullptr;
  HWND last_ = nullptr;  // had the keyboard when another window came in front
  Com<IFontDisp> font_ = DefaultFont();
  RECT area_{};  // of a page, in the frame's client area
  bool closed_ = false;
};

}  // namespace qrn::host
