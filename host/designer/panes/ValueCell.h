// What lies over the value of the chosen row: a text field or a combo box, and a button for a
// dialog. All are the system's.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace qrn::designer {

enum class CellKind { Text, Choice, Fixed };  // typed; typed or chosen; only shown

struct CellFace {
  CellKind kind = CellKind::Fixed;
  bool hasButton = false;
  std::string text;  // UTF-8, lines end with CR LF
  bool operator==(const CellFace&) const = default;
};

class ValueCell {
 public:
  // Ids of the windows in WM_COMMAND to the parent.
  enum Id { kTextId = 20, kChoiceId, kButtonId };

  void Make(HWND parent, HFONT font);

  void Show(const CellFace& face);
  void Hide() noexcept;
  // The value's place in the parent; several lines of text take more room downwards.
  void Move(const RECT& value) noexcept;

  // Holds what the user typed, or chose. The parent hears of changes by the user alone.
  std::string Text() const;
  void PutText(const std::string& text);
  bool IsFilling() const noexcept { return isFilling_; }
  void Offer(const std::vector<std::string>& choices);
  bool IsDropped() const noexcept;
  void Drop() noexcept;

  const CellFace& face() const noexcept { return face_; }
  // The window that is typed in, and whether that or a part of it is `window`.
  HWND Field() const noexcept { return face_.kind == CellKind::Choice ? choice_ : text_; }
  bool Has(HWND window) const noexcept;
  void TakeFocus() noexcept;
  void SelectAll() noexcept;
  // At the caret, in a text.
  void InsertLine() noexcept;
  bool UndoTyping() noexcept;
  // The caret has a line above (-1) or below (1).
  bool HasLine(int direction) const noexcept;

 private:
  HWND Edit() const noexcept;
  void Arrange() noexcept;
  int LineCount() const noexcept;

  HWND text_ = nullptr;
  HWND choice_ = nullptr;
  HWND button_ = nullptr;
  HFONT font_ = nullptr;
  CellFace face_;
  RECT place_{};
  bool isShown_ = false;
  bool isFilling_ = false;
};

}  // namespace qrn::designer
