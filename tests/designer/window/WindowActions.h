// What somebody does before the designer's window, one thing at a time, chosen by numbers: presses
// of the mouse and of keys where they would go, commands of its menus, typing in its panes. All of
// it goes through the window's messages.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "host/designer/window/DesignWindow.h"

namespace qrn::test {

class WindowActions {
 public:
  // `choose` gives a number from 0 to below its argument.
  WindowActions(designer::DesignWindow& window, std::function<uint32_t(uint32_t)> choose)
      : window_(window), choose_(std::move(choose)) {}

  // Does one. It may be refused or change nothing.
  void DoOne();
  // Which is being done, or was; may be asked on any thread.
  const char* doing() const noexcept { return doing_; }
  // Gives up what stands typed and was refused.
  void GiveUpTyping();
  // Lets the window have what waits for it.
  void Pump();
  void Command(WORD command);
  // Drags the bar beside the properties so many pixels to the right.
  void DragSplitter(int by);

 private:
  struct Row;
  static const Row kRows[];
  class Held;

  designer::Design& design() { return window_.design(); }
  bool Chance(uint32_t oneIn) { return choose_(oneIn) == 0; }
  POINT AnyPoint();
  HWND Child(const wchar_t* className, int id) const;
  HWND Form() const;
  void Mouse(UINT message, POINT onForm, WPARAM held);
  void Key(HWND window, WORD key);
  void Type(HWND field, const std::wstring& text);

  void Click();
  void Drag();
  void Draw();
  void PutInMiddle();
  void Arrow();
  void Walk();
  void Arrange();
  void Edit();
  void Step();
  void TabOrder();
  void Property();
  void ResetProperty();
  void NextValue();
  void Code();
  void Handler();
  void Pane();
  void Splitter();

  designer::DesignWindow& window_;
  std::function<uint32_t(uint32_t)> choose_;
  std::atomic<const char*> doing_ = "nothing";
};

}  // namespace qrn::test
