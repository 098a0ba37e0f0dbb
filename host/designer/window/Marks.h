// What is drawn over the form: handles of what is selected, outlines of what is being dragged,
// numbers of the Tab key. A window that has no other area than its marks, so that what lies beneath
// is neither covered nor drawn again.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace qrn::designer {

enum class MarkKind {
  Handle,       // of the primary control: it can be pulled
  FixedHandle,  // that cannot be pulled, and those of the others that are selected
  Outline,
  Number,
  TakenNumber,  // of a control that was clicked already
};

struct Mark {
  RECT place{};  // pixels of the window that the marks lie over
  MarkKind kind = MarkKind::Handle;
  std::wstring text = {};

  bool operator==(const Mark& other) const noexcept {
    return EqualRect(&place, &other.place) && kind == other.kind && text == other.text;
  }
};

class Marks {
 public:
  // A child of `over`, in front of all others.
  Marks(HWND over, HFONT font);
  Marks(const Marks&) = delete;
  Marks& operator=(const Marks&) = delete;
  ~Marks();

  void Show(std::vector<Mark> marks);
  // In front of what came since.
  void Raise() noexcept;
  // Of a number's mark, in pixels.
  SIZE SizeOf(const std::wstring& text) const;

 private:
  void Paint();
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  HWND window_ = nullptr;
  HFONT font_;
  std::vector<Mark> marks_;
};

}  // namespace qrn::designer
