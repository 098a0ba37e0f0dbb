// The system's text field of many lines as an editor of code: lines, columns, and what keys do
// there that a plain field does not.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "com/Fonts.h"
#include "host/designer/model/CodeTyping.h"

namespace qrn::designer {

struct CaretPlace {
  int line = 0;  // both counted from 0
  int column = 0;
  bool operator==(const CaretPlace&) const = default;
};

// But for the code itself texts are UTF-16 and lines end with CR LF, as the field has them.
class CodeEditor {
 public:
  // `moved` is called when the caret or the first visible line may be elsewhere; `undo` in place of
  // the field's own, which knows nothing of the form's steps.
  void Make(HWND parent, int id, std::function<void()> moved, std::function<void()> undo);
  HWND window() const noexcept { return window_; }
  HFONT font() const noexcept { return font_.get(); }

  // UTF-8, lines end with LF. What differs is replaced, and no more: the view stays, the caret goes
  // behind what is new.
  std::string Code() const;
  void PutCode(const std::string& code);
  std::u16string Text() const;
  bool IsFilling() const noexcept { return isFilling_; }

  CaretPlace Caret() const noexcept;
  int LineCount() const noexcept;
  int FirstVisibleLine() const noexcept;
  // Pixels from the window's top to its first line.
  int Top() const noexcept;
  // To a line's first word, with the line in view: at the top if it was not.
  void GoTo(int line) noexcept;
  size_t SelectionStart() const noexcept;
  size_t SelectionEnd() const noexcept;
  void Select(size_t start, size_t end) noexcept;
  void SelectAll() noexcept;

  // Typed by the user: blanks to the next stop, a new line as far in as this one; several lines
  // selected are shifted.
  void Tab(bool back);
  void NewLine();

 private:
  static LRESULT CALLBACK Watch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                UINT_PTR id, DWORD_PTR editor);
  std::u16string Line(int line) const;
  void Replace(const std::u16string& text) noexcept;
  void PutText(const std::u16string& text);
  size_t LineStart(int line) const noexcept;
  void Shift(bool back);

  HWND window_ = nullptr;
  com::FontInUse font_;
  std::function<void()> moved_;
  std::function<void()> undo_;
  bool isFilling_ = false;
};

}  // namespace qrn::designer
