// Keys, mouse and menu of the property list.
#include "com/Handles.h"
#include "com/Text.h"
#include "host/designer/panes/PaneTexts.h"
#include "host/designer/panes/PropertyPane.h"

namespace qrn::designer {

// First what is typed, then the form's steps.
void PropertyPane::Undo() {
  if (typed_.Stands()) {
    cell_.UndoTyping();
  } else {
    design().Undo();
  }
}

bool PropertyPane::OnEnter() {
  if (!IsPressed(VK_CONTROL)) {
    if (Settle()) cell_.SelectAll();
    return true;
  }
  if (cell_.face().hasButton) OpenDialog();
  if (cell_.face().kind == CellKind::Text) cell_.InsertLine();
  return true;
}

bool PropertyPane::OnEscape() {
  if (!typed_.Stands()) return false;
  typed_.Forget();
  ShowCell();
  cell_.SelectAll();
  return true;
}

// Takes a picture or font away; with Ctrl any value.
bool PropertyPane::OnDelete() {
  const bool resets = IsPressed(VK_CONTROL) || (cell_.face().kind == CellKind::Fixed);
  if (resets) Reset();
  return resets;
}

bool PropertyPane::OnMove(UINT key) {
  const int page = static_cast<int>(list_.PageSize());
  const int all = static_cast<int>(rows_.Count());
  const bool isControl = IsPressed(VK_CONTROL);
  if (key == VK_UP && !cell_.HasLine(-1)) return Walk(-1), true;
  if (key == VK_DOWN && !cell_.HasLine(1)) return Walk(1), true;
  if (key == VK_PRIOR) return Walk(-page), true;
  if (key == VK_NEXT) return Walk(page), true;
  if (key == VK_HOME && isControl) return Walk(-all), true;
  if (key == VK_END && isControl) return Walk(all), true;
  return false;
}

// With Ctrl or without, or whatever is held with it. False: the key is the field's own.
struct PropertyPane::KeyRow {
  enum Held { Any, Plain, Control };
  UINT key;
  Held held;
  bool (*run)(PropertyPane& pane);
};

const PropertyPane::KeyRow PropertyPane::kKeys[] = {
    {VK_RETURN, KeyRow::Any, [](PropertyPane& pane) { return pane.OnEnter(); }},
    {VK_ESCAPE, KeyRow::Any, [](PropertyPane& pane) { return pane.OnEscape(); }},
    {VK_DELETE, KeyRow::Any, [](PropertyPane& pane) { return pane.OnDelete(); }},
    {VK_F2, KeyRow::Any, [](PropertyPane& pane) { return pane.OpenDialog(), true; }},
    {VK_TAB, KeyRow::Plain,
     [](PropertyPane& pane) { return SetFocus(pane.objects_.window()), true; }},
    {'Z', KeyRow::Control, [](PropertyPane& pane) { return pane.Undo(), true; }},
    {'Y', KeyRow::Control,
     [](PropertyPane& pane) { return !pane.typed_.Stands() && (pane.design().Redo(), true); }},
    {'A', KeyRow::Control, [](PropertyPane& pane) { return pane.cell_.SelectAll(), true; }},
};

bool PropertyPane::OnKey(UINT key) {
  if (cell_.IsDropped()) return false;
  const bool isControl = IsPressed(VK_CONTROL);
  if (key >= 'A' && key <= 'Z' && isControl && IsPressed(VK_SHIFT)) {
    return JumpTo(static_cast<char>(key)), true;
  }
  for (const KeyRow& row : kKeys) {
    const bool fits = row.held == KeyRow::Any || (row.held == KeyRow::Control) == isControl;
    if (row.key == key && fits) return row.run(*this);
  }
  return OnMove(key);
}

// The second half of a double click on a value meets the field that came over it with the first.
bool PropertyPane::OnMouse(const MSG& message) {
  const bool isPress = message.message == WM_LBUTTONDOWN || message.message == WM_LBUTTONDBLCLK;
  if (isPress && cell_.Has(message.hwnd) && cell_.face().kind != CellKind::Text) {
    const bool again =
        message.message == WM_LBUTTONDBLCLK || message.time - chosenAt_ <= GetDoubleClickTime();
    chosenAt_ = 0;
    const bool onField = message.hwnd != cell_.Field() || cell_.face().kind == CellKind::Fixed;
    if (again && onField && !cell_.IsDropped()) return GoOn(), true;
  }
  if (message.message != WM_MOUSEWHEEL || cell_.IsDropped()) return false;
  SendMessageW(list_.window(), message.message, message.wParam, message.lParam);
  return true;
}

bool PropertyPane::PreTranslate(MSG& message) {
  if (!LiesIn(message.hwnd, window())) return false;
  if (message.message == WM_KEYDOWN && cell_.Has(message.hwnd)) {
    return OnKey(static_cast<UINT>(message.wParam));
  }
  const bool isTab = message.message == WM_KEYDOWN && message.wParam == VK_TAB;
  if (isTab && message.hwnd == objects_.window() && !IsPressed(VK_CONTROL)) {
    return cell_.TakeFocus(), true;
  }
  return OnMouse(message);
}

void PropertyPane::ShowMenu() {
  struct Offered {
    PaneText text;
    bool isAble;
    void (PropertyPane::*run)();
  };
  const PropertyRow* row = rows_.Chosen();
  const Offered items[] = {
      {PaneText::ResetValue, row && !row->isInitial && !row->info->readOnly, &PropertyPane::Reset},
      {PaneText::NextValue, row && !List().NextChoice(row->info->name).empty(),
       &PropertyPane::GoOn},
      {PaneText::OpenDialog, cell_.face().hasButton, &PropertyPane::OpenDialog},
  };
  const com::Menu menu(CreatePopupMenu());
  UINT_PTR id = 0;
  for (const Offered& item : items) {
    AppendMenuW(menu.get(), item.isAble ? MF_STRING : MF_STRING | MF_GRAYED, ++id,
                com::Wide(Said(item.text, place_.language())).c_str());
  }
  POINT at{};
  GetCursorPos(&at);
  const int chosen = TrackPopupMenu(menu.get(), TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON,
                                    at.x, at.y, 0, window(), nullptr);
  if (chosen > 0) (this->*items[chosen - 1].run)();
}

}  // namespace qrn::designer
