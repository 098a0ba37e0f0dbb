#include "host/designer/panes/ValueCell.h"

// clang-format off
#include <windows.h>
#include <commctrl.h>
// clang-format on

#include <algorithm>

#include "com/Text.h"
#include "host/designer/panes/PaneWindow.h"

namespace qrn::designer {
namespace {

constexpr int kMostLines = 6;
constexpr int kValuesHeight = 220;
constexpr int kLeastDropWidth = 180;
// Between the combo box's own height and that of its field.
constexpr int kChoiceFrame = 6;

class Filling {
 public:
  explicit Filling(bool& flag) noexcept : flag_(flag), before_(flag) { flag_ = true; }
  Filling(const Filling&) = delete;
  Filling& operator=(const Filling&) = delete;
  ~Filling() { flag_ = before_; }

 private:
  bool& flag_;
  bool before_;
};

void Reveal(HWND window, bool shown) noexcept { ShowWindow(window, shown ? SW_SHOWNA : SW_HIDE); }

}  // namespace

void ValueCell::Make(HWND parent, HFONT font) {
  font_ = font;
  constexpr DWORD kHidden = WS_CLIPSIBLINGS;
  text_ =
      MakeControl(parent, L"Edit",
                  kHidden | WS_BORDER | WS_TABSTOP | ES_MULTILINE | ES_AUTOHSCROLL | ES_AUTOVSCROLL,
                  kTextId, font);
  choice_ = MakeControl(parent, L"ComboBox",
                        kHidden | WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWN | CBS_AUTOHSCROLL,
                        kChoiceId, font);
  button_ = MakeControl(parent, L"Button", kHidden | BS_PUSHBUTTON, kButtonId, font);
  SetWindowTextW(button_, L"...");
  SendMessageW(text_, EM_SETLIMITTEXT, 0, 0);
  Hide();
  for (HWND window : {text_, choice_, button_}) {
    SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  }
}

void ValueCell::Show(const CellFace& face) {
  const bool isSame = isShown_ && face.kind == face_.kind && face.hasButton == face_.hasButton;
  const bool hadFocus = isShown_ && Has(GetFocus());
  face_ = face;
  isShown_ = true;
  SendMessageW(text_, EM_SETREADONLY, face.kind == CellKind::Fixed, 0);
  Arrange();
  PutText(face.text);
  if (isSame) return;
  if (hadFocus) SetFocus(Field());
  Reveal(text_, face.kind != CellKind::Choice);
  Reveal(choice_, face.kind == CellKind::Choice);
  Reveal(button_, face.hasButton);
}

void ValueCell::Hide() noexcept {
  isShown_ = false;
  for (HWND window : {text_, choice_, button_}) Reveal(window, false);
}

void ValueCell::Move(const RECT& value) noexcept {
  place_ = value;
  if (isShown_) Arrange();
}

int ValueCell::LineCount() const noexcept {
  const auto lines = static_cast<int>(SendMessageW(text_, EM_GETLINECOUNT, 0, 0));
  return face_.kind == CellKind::Text ? std::clamp(lines, 1, kMostLines) : 1;
}

void ValueCell::Arrange() noexcept {
  RECT field = place_;
  const int height = field.bottom - field.top;
  if (face_.hasButton) {
    field.right -= height;
    PlaceWindow(button_, {field.right, field.top, place_.right, field.bottom});
  }
  if (face_.kind == CellKind::Choice) {
    SendMessageW(choice_, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1),
                 std::max(height - kChoiceFrame, 1));
    field.bottom = field.top + Scaled(kValuesHeight);
    PlaceWindow(choice_, field);
    SendMessageW(choice_, CB_SETDROPPEDWIDTH, static_cast<WPARAM>(Scaled(kLeastDropWidth)), 0);
    return;
  }
  field.bottom += (LineCount() - 1) * LineHeight(font_);
  PlaceWindow(text_, field);
}

std::string ValueCell::Text() const { return TextOf(Field()); }

void ValueCell::PutText(const std::string& text) {
  const Filling filling(isFilling_);
  face_.text = text;
  if (Text() == text) return;
  SetText(Field(), text);
  if (Has(GetFocus())) SelectAll();
  Arrange();
}

// Emptying the list empties the field as well.
void ValueCell::Offer(const std::vector<std::string>& choices) {
  const Filling filling(isFilling_);
  const std::string text = Text();
  SendMessageW(choice_, CB_RESETCONTENT, 0, 0);
  for (const std::string& choice : choices) AddLine(choice_, choice);
  const auto now = std::find(choices.begin(), choices.end(), text);
  if (now != choices.end()) {
    SendMessageW(choice_, CB_SETCURSEL, static_cast<WPARAM>(now - choices.begin()), 0);
  } else {
    SetText(choice_, text);
  }
}

bool ValueCell::IsDropped() const noexcept {
  return face_.kind == CellKind::Choice && SendMessageW(choice_, CB_GETDROPPEDSTATE, 0, 0) != FALSE;
}

void ValueCell::Drop() noexcept { SendMessageW(choice_, CB_SHOWDROPDOWN, TRUE, 0); }

bool ValueCell::Has(HWND window) const noexcept {
  return window && (window == text_ || window == button_ || LiesIn(window, choice_));
}

HWND ValueCell::Edit() const noexcept {
  if (face_.kind != CellKind::Choice) return text_;
  COMBOBOXINFO parts{};
  parts.cbSize = sizeof parts;
  return GetComboBoxInfo(choice_, &parts) ? parts.hwndItem : choice_;
}

void ValueCell::TakeFocus() noexcept {
  if (!isShown_) return;
  SetFocus(Field());
  SelectAll();
}

void ValueCell::SelectAll() noexcept { SendMessageW(Edit(), EM_SETSEL, 0, -1); }

void ValueCell::InsertLine() noexcept {
  SendMessageW(text_, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"\r\n"));
  Arrange();
}

bool ValueCell::UndoTyping() noexcept { return SendMessageW(Edit(), EM_UNDO, 0, 0) != FALSE; }

bool ValueCell::HasLine(int direction) const noexcept {
  if (face_.kind != CellKind::Text) return false;
  const auto lines = static_cast<int>(SendMessageW(text_, EM_GETLINECOUNT, 0, 0));
  const auto line =
      static_cast<int>(SendMessageW(text_, EM_LINEFROMCHAR, static_cast<WPARAM>(-1), 0));
  return line + direction >= 0 && line + direction < lines;
}

}  // namespace qrn::designer
