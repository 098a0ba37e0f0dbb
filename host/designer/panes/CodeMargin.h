// The strip left of the code: numbers of lines, and marks on those that cannot run.
#pragma once

#include <set>

#include "host/designer/panes/PaneWindow.h"

namespace qrn::designer {

class CodeMargin final : private PaneWindow {
 public:
  void MakeIn(HWND parent, HFONT font);
  HWND Window() const noexcept { return window(); }
  int Width() const noexcept;  // enough for the lines that there are

  struct View {
    int first = 0;  // line, counted from 0, that begins at `top` pixels
    int count = 1;  // of lines in all
    int top = 0;
    bool operator==(const View&) const = default;
  };
  void Show(const View& view) noexcept;
  void Mark(std::set<int> lines) noexcept;

 private:
  bool OnMessage(com::Message& message) override;
  void Paint() const;
  void PaintLine(HDC dc, int line, RECT place) const;

  HFONT font_ = nullptr;
  View view_;
  std::set<int> marked_;
};

}  // namespace qrn::designer
