#include "host/designer/panes/PropertyPane.h"

// clang-format off
#include <windows.h>
#include <commctrl.h>
// clang-format on

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "com/Handles.h"
#include "com/Text.h"
#include "host/designer/model/PropertyList.h"
#include "host/designer/panes/ObjectBox.h"
#include "host/designer/panes/PaneTexts.h"
#include "host/designer/panes/PaneWindow.h"
#include "host/designer/panes/PropertyDialogs.h"
#include "host/designer/panes/RowList.h"
#include "host/designer/panes/ValueCell.h"
#include "host/form/SourceText.h"

namespace qrn::designer {
namespace {

enum ChildId { kObjectsId = 10, kRowsId, kTitleId, kDescriptionId };
enum MenuId { kResetItem = 1, kNextItem, kDialogItem };
// To the pane itself, once what happens now is over.
enum OwnMessage : UINT { kGiveBack = WM_APP + 1, kTakeChosen, kTakeLate, kFocusCell };

constexpr int kDescriptionLines = 3;
constexpr int kSpare = 3;

struct CellRow {
  CellKind kind;
  bool hasButton;
};
// By PropertyKind.
constexpr CellRow kCells[] = {
    {CellKind::Text, false},   {CellKind::Text, false},  {CellKind::Text, false},
    {CellKind::Choice, false}, {CellKind::Choice, true}, {CellKind::Choice, false},
    {CellKind::Fixed, true},   {CellKind::Fixed, true},  {CellKind::Fixed, false},
};

CellFace FaceOf(const PropertyRow& row) {
  const PropertyInfo& info = *row.info;
  if (info.readOnly) return {CellKind::Fixed, false, row.text};
  if (info.offer != Offer::None) return {CellKind::Choice, false, row.text};
  const CellRow& cell = kCells[static_cast<size_t>(info.kind)];
  return {cell.kind, cell.hasButton, row.text};
}

// A row has one line.
std::string OnOneLine(std::string text) {
  for (size_t at = text.find_first_of("\r\n"); at != std::string::npos;
       at = text.find_first_of("\r\n")) {
    text.replace(at, text.compare(at, 2, "\r\n") == 0 ? 2 : 1, "\xC2\xB6");
  }
  return text;
}

class PropertyPane final : public Pane, private PaneWindow {
 public:
  PropertyPane(Workplace& place, HWND parent);
  ~PropertyPane() override { Close(); }

  HWND Window() const noexcept override { return window(); }
  void TakeFocus() override { cell_.TakeFocus(); }
  void OnChange(const ChangeReport& report) override;
  void OnOpened() override;
  bool Settle() override;
  bool PreTranslate(MSG& message) override;

 private:
  // What the user typed and nobody took yet, and for whom.
  struct Typed {
    Ids ids;
    std::string property;
    std::string before;
    std::string text;
  };

  bool OnMessage(com::Message& message) override;
  void OnCommand(int id, int code);
  bool OnNotify(const NMHDR& notice, LRESULT* result);
  void OnTyped();
  void OnLeft();
  void Arrange();

  Design& design() const { return place_.design(); }
  PropertyList List() const { return PropertyList(place_.design(), &place_.offers()); }
  void LookForPages();
  void Refresh();
  std::vector<ShownRow> ShownRows() const;
  // The property of a row of the list; null for that of the pages.
  const PropertyRow* At(size_t row) const;
  size_t RowOf(const std::string& property) const;
  void ShowCell();
  void PlaceCell();
  void Describe();

  void Choose(size_t row);
  void Walk(int steps);
  void JumpTo(char letter);
  bool Take();
  void TakeLate();
  void GiveBack();
  void Put(const Refusal& refusal);
  void GoOn();
  void Reset();
  void OpenDialog();
  Refusal ByDialog(const PropertyRow& row);
  Refusal LoadPicture(const PropertyInfo& info);
  void ShowMenu();
  bool OnKey(UINT key);
  void Undo();
  bool OnEnter();
  bool OnEscape();
  bool OnDelete();
  bool OnMove(UINT key);
  bool OnMouse(const MSG& message);

  Workplace& place_;
  ObjectBox objects_;
  RowList list_;
  ValueCell cell_;
  HWND title_ = nullptr;
  HWND description_ = nullptr;
  com::GdiFont bold_;
  bool hasPages_ = false;
  std::vector<PropertyRow> rows_;
  size_t chosen_ = 0;  // of the list's rows
  // Where the user is, though what is selected may have no such property; empty: on the pages.
  std::string wanted_ = "Name";
  bool isChoosing_ = false;
  DWORD chosenAt_ = 0;  // when a row was clicked, in the system's milliseconds
  std::optional<Typed> typed_;
  std::optional<Typed> late_;  // was typed when others were selected without the keyboard leaving
  Refusal refusal_;            // of what was typed, not told yet
};

PropertyPane::PropertyPane(Workplace& place, HWND parent)
    : place_(place), bold_(BoldOf(place.Font())) {
  const INITCOMMONCONTROLSEX common{sizeof common, ICC_LISTVIEW_CLASSES};
  InitCommonControlsEx(&common);
  Make(parent, WS_VISIBLE);
  objects_.Make(window(), kObjectsId, place.Font());
  list_.Make(window(), kRowsId, place.Font(), [this] { PlaceCell(); });
  cell_.Make(window(), place.Font());
  title_ = MakeControl(window(), L"Static", SS_LEFT | SS_NOPREFIX, kTitleId, bold_.get());
  description_ =
      MakeControl(window(), L"Static", SS_LEFT | SS_NOPREFIX, kDescriptionId, place.Font());
  Refresh();
}

// Whether there are pages is asked when it can be otherwise: the answer makes them all.
void PropertyPane::OnChange(const ChangeReport& report) {
  if (!report.Any() || report.structure) LookForPages();
  Refresh();
}

void PropertyPane::LookForPages() {
  const Ids& ids = design().selection();
  hasPages_ = ids.size() == 1 && place_.HasPages(ids.front());
}

void PropertyPane::OnOpened() {
  LookForPages();
  typed_.reset();
  late_.reset();
  refusal_.reset();
  Refresh();
}

// --- What is shown.

const PropertyRow* PropertyPane::At(size_t row) const {
  const size_t at = row - (hasPages_ ? 1 : 0);
  return (hasPages_ && row == 0) || at >= rows_.size() ? nullptr : &rows_[at];
}

size_t PropertyPane::RowOf(const std::string& property) const {
  const auto found = std::find_if(rows_.begin(), rows_.end(), [&](const PropertyRow& row) {
    return row.info->name == property;
  });
  const size_t first = hasPages_ ? 1 : 0;
  return found == rows_.end() ? first : first + static_cast<size_t>(found - rows_.begin());
}

std::vector<ShownRow> PropertyPane::ShownRows() const {
  std::vector<ShownRow> shown;
  if (hasPages_) shown.push_back({Said(PaneText::CustomRow, place_.language()), {}});
  for (const PropertyRow& row : rows_) shown.push_back({row.info->name, OnOneLine(row.text)});
  return shown;
}

void PropertyPane::Refresh() {
  const Ids& ids = design().selection();
  rows_ = List().Rows();
  if (typed_ && typed_->ids != ids) {
    late_ = std::exchange(typed_, {});
    PostMessageW(window(), kTakeLate, 0, 0);
  }
  const bool choosing = std::exchange(isChoosing_, true);
  objects_.Show(design(), place_.language());
  list_.Show(ShownRows());
  const bool onPages = hasPages_ && wanted_.empty() && chosen_ == 0;
  chosen_ = onPages ? 0 : RowOf(wanted_);
  if (chosen_ < list_.count()) list_.Choose(chosen_);
  isChoosing_ = choosing;
  if (!typed_) ShowCell();
  PlaceCell();
}

void PropertyPane::ShowCell() {
  const PropertyRow* row = At(chosen_);
  if (chosen_ >= list_.count()) {
    cell_.Hide();
  } else {
    cell_.Show(row ? FaceOf(*row) : CellFace{CellKind::Fixed, true, {}});
  }
  Describe();
}

void PropertyPane::PlaceCell() {
  const RECT place = list_.ValuePlace(chosen_);
  if (IsRectEmpty(&place)) return cell_.Move({-1000, -1000, -900, -980});
  cell_.Move(place);
}

void PropertyPane::Describe() {
  const PropertyRow* row = At(chosen_);
  const bool onPages = !row && hasPages_;
  SetText(title_, row       ? row->info->name
                  : onPages ? Said(PaneText::CustomRow, place_.language())
                            : "");
  SetText(description_, row       ? row->info->description
                        : onPages ? Said(PaneText::CustomHint, place_.language())
                                  : "");
}

void PropertyPane::Arrange() {
  const SIZE size = ClientSize();
  const int line = LineHeight(place_.Font());
  const int spare = Scaled(kSpare);
  PlaceWindow(objects_.window(), {0, 0, size.cx, Scaled(320)});
  RECT box{};
  GetWindowRect(objects_.window(), &box);
  const int top = box.bottom - box.top + spare;
  const int bottom = std::max<int>(size.cy - (kDescriptionLines + 1) * line - 2 * spare, top);
  PlaceWindow(list_.window(), {0, top, size.cx, bottom});
  list_.FitColumns();
  PlaceWindow(title_, {spare, bottom + spare, size.cx - spare, bottom + spare + line});
  PlaceWindow(description_, {spare, bottom + spare + line, size.cx - spare, size.cy});
  PlaceCell();
}

// --- What is typed.

void PropertyPane::OnTyped() {
  const PropertyRow* row = At(chosen_);
  if (cell_.IsFilling() || !row) return;
  if (!typed_) typed_ = Typed{design().selection(), row->info->name, row->text, {}};
  typed_->text = cell_.Text();
}

// False, with the refusal kept, if it is none; then it stays typed.
bool PropertyPane::Take() {
  refusal_.reset();
  if (!typed_) return true;
  const Typed typed = std::move(*typed_);
  typed_.reset();
  if (typed.text == typed.before) return true;
  const Ids selected = design().selection();
  design().Select(typed.ids);
  refusal_ = List().Enter(typed.property, typed.text);
  design().Seal();
  if (refusal_) {
    typed_ = typed;
    return false;
  }
  design().Select(selected);
  Refresh();
  return true;
}

void PropertyPane::TakeLate() {
  if (!late_ || typed_) return;
  typed_ = std::exchange(late_, {});
  const bool stands = std::any_of(typed_->ids.begin(), typed_->ids.end(),
                                  [&](ControlId id) { return design().Has(id); });
  if (!stands) typed_.reset();
  if (!Take()) GiveBack();
}

// Back to what was refused, with the reason.
void PropertyPane::GiveBack() {
  const Refusal refusal = std::exchange(refusal_, {});
  if (!refusal || !typed_) return;
  const Typed typed = *typed_;
  design().Select(typed.ids);
  wanted_ = typed.property;
  typed_.reset();
  Refresh();
  cell_.PutText(typed.text);
  typed_ = typed;
  place_.Tell(refusal);
  cell_.TakeFocus();
}

bool PropertyPane::Settle() {
  TakeLate();
  if (Take()) return true;
  GiveBack();
  return false;
}

// The keyboard went elsewhere in the designer: what was typed is meant. Not so if another program
// or a dialog came in front.
void PropertyPane::OnLeft() {
  HWND now = GetFocus();
  const bool isHere = now && GetAncestor(now, GA_ROOT) == GetAncestor(window(), GA_ROOT);
  if (!isHere || cell_.Has(now) || !typed_ || refusal_) return;
  if (!Take()) PostMessageW(window(), kGiveBack, 0, 0);
}

void PropertyPane::Put(const Refusal& refusal) {
  design().Seal();
  Refresh();
  if (refusal) place_.Tell(refusal);
}

// --- Where the user is.

void PropertyPane::Choose(size_t row) {
  if (row >= list_.count()) return;
  if (!Take()) {
    PostMessageW(window(), kGiveBack, 0, 0);
    return;
  }
  chosen_ = row;
  const PropertyRow* property = At(row);
  wanted_ = property ? property->info->name : std::string();
  const bool choosing = std::exchange(isChoosing_, true);
  list_.Choose(row);
  isChoosing_ = choosing;
  ShowCell();
  PlaceCell();
}

void PropertyPane::Walk(int steps) {
  if (list_.count() == 0 || !Settle()) return;
  const auto last = static_cast<long long>(list_.count()) - 1;
  Choose(
      static_cast<size_t>(std::clamp<long long>(static_cast<long long>(chosen_) + steps, 0, last)));
  cell_.TakeFocus();
}

void PropertyPane::JumpTo(char letter) {
  const size_t first = hasPages_ ? 1 : 0;
  if (rows_.empty() || !Settle()) return;
  const size_t from = chosen_ < first ? rows_.size() - 1 : chosen_ - first;
  Choose(first + NextWithLetter(rows_, from, letter));
  cell_.TakeFocus();
}

// A double click: the next of the values that there are, or the dialog.
void PropertyPane::GoOn() {
  if (!Settle()) return;
  const PropertyRow* row = At(chosen_);
  const std::string next = row ? List().NextChoice(row->info->name) : std::string();
  if (next.empty()) return OpenDialog();
  Put(List().Enter(row->info->name, next));
  cell_.TakeFocus();
}

void PropertyPane::Reset() {
  const PropertyRow* row = At(chosen_);
  if (!row) return;
  typed_.reset();
  Put(List().Reset(row->info->name));
}

void PropertyPane::OpenDialog() {
  if (!cell_.face().hasButton || chosen_ >= list_.count() || !Settle()) return;
  const PropertyRow* row = At(chosen_);
  if (row) {
    Put(ByDialog(*row));
  } else {
    place_.ShowPages(design().Primary());
  }
  cell_.TakeFocus();
}

Refusal PropertyPane::ByDialog(const PropertyRow& row) {
  const PropertyInfo info = *row.info;
  if (info.kind == PropertyKind::Picture) return LoadPicture(info);
  if (info.kind == PropertyKind::Font) {
    const auto now = design().Group(design().Primary(), info.LineName());
    const auto font = AskFont(place_.Frame(), info.name, now);
    return font ? List().EnterFont(*font) : Refusal{};
  }
  form::PropertyValue now;
  ReadTyped(row.text, info, &now);
  const int32_t* colour = std::get_if<int32_t>(&now);
  const auto mixed = AskColour(place_.Frame(), colour ? static_cast<uint32_t>(*colour) : 0);
  return mixed ? List().EnterColour(info.name, *mixed) : Refusal{};
}

Refusal PropertyPane::LoadPicture(const PropertyInfo& info) {
  const auto path = AskPictureFile(place_.Frame(), place_.language());
  if (!path) return {};
  try {
    const std::string bytes = form::ReadWholeFile(*path);
    if (IsPicture(bytes)) return List().EnterPicture(info.name, bytes);
    place_.Tell(Said(PaneText::NoPicture, place_.language(), {*path}));
  } catch (const std::runtime_error& error) {
    place_.Tell(std::string(error.what()));
  }
  return {};
}

void PropertyPane::ShowMenu() {
  struct Item {
    MenuId id;
    PaneText text;
    bool isAble;
  };
  const PropertyRow* row = At(chosen_);
  const Item items[] = {
      {kResetItem, PaneText::ResetValue, row && !row->isInitial && !row->info->readOnly},
      {kNextItem, PaneText::NextValue, row && !List().NextChoice(row->info->name).empty()},
      {kDialogItem, PaneText::OpenDialog, cell_.face().hasButton},
  };
  const com::Menu menu(CreatePopupMenu());
  for (const Item& item : items) {
    AppendMenuW(menu.get(), item.isAble ? MF_STRING : MF_STRING | MF_GRAYED, item.id,
                com::Wide(Said(item.text, place_.language())).c_str());
  }
  POINT at{};
  GetCursorPos(&at);
  const int chosen = TrackPopupMenu(menu.get(), TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON,
                                    at.x, at.y, 0, window(), nullptr);
  if (chosen == kResetItem) Reset();
  if (chosen == kNextItem) GoOn();
  if (chosen == kDialogItem) OpenDialog();
}

// --- Messages.

void PropertyPane::OnCommand(int id, int code) {
  const bool typed = (id == ValueCell::kTextId && code == EN_CHANGE) ||
                     (id == ValueCell::kChoiceId && code == CBN_EDITCHANGE);
  const bool left = (id == ValueCell::kTextId && code == EN_KILLFOCUS) ||
                    (id == ValueCell::kChoiceId && code == CBN_KILLFOCUS);
  if (typed) return OnTyped();
  if (left) return OnLeft();
  if (id == ValueCell::kButtonId && code == BN_CLICKED) return OpenDialog();
  const PropertyRow* row = At(chosen_);
  if (id == ValueCell::kChoiceId && code == CBN_DROPDOWN && row) {
    cell_.Offer(List().Choices(row->info->name));
  }
  if (id == ValueCell::kChoiceId && code == CBN_SELENDOK) {
    PostMessageW(window(), kTakeChosen, 0, 0);
  }
  if (id == kObjectsId && code == CBN_SELCHANGE) {
    const ControlId chosen = objects_.Chosen();
    if (chosen != 0) design().Select({chosen});
  }
}

bool PropertyPane::OnNotify(const NMHDR& notice, LRESULT* result) {
  *result = 0;
  if (notice.idFrom != kRowsId) return false;
  if (notice.code == static_cast<UINT>(LVN_ITEMCHANGED)) {
    const auto& item = reinterpret_cast<const NMLISTVIEW&>(notice);
    const bool chosen = (item.uNewState & LVIS_SELECTED) && !(item.uOldState & LVIS_SELECTED);
    if (chosen && !isChoosing_) Choose(static_cast<size_t>(item.iItem));
  }
  if (notice.code == static_cast<UINT>(NM_CLICK)) {
    chosenAt_ = GetTickCount();
    PostMessageW(window(), kFocusCell, 0, 0);
  }
  if (notice.code == static_cast<UINT>(NM_DBLCLK)) GoOn();
  if (notice.code == static_cast<UINT>(NM_RCLICK)) ShowMenu();
  if (notice.code == static_cast<UINT>(NM_SETFOCUS) && !IsPressed(VK_LBUTTON)) {
    PostMessageW(window(), kFocusCell, 0, 0);
  }
  return true;
}

bool PropertyPane::OnMessage(com::Message& message) {
  switch (message.id) {
    case WM_SIZE:
      Arrange();
      return true;
    case WM_COMMAND:
      OnCommand(LOWORD(message.wParam), HIWORD(message.wParam));
      return true;
    case WM_NOTIFY:
      return OnNotify(*reinterpret_cast<const NMHDR*>(message.lParam), &message.result);
    case WM_SETFOCUS:
    case kFocusCell:
      cell_.TakeFocus();
      return true;
    case kTakeLate:
      TakeLate();
      return true;
    case kGiveBack:
      GiveBack();
      return true;
    case kTakeChosen:
      OnTyped();
      Settle();
      return true;
    default:
      return false;
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
  if (!typed_) return false;
  typed_.reset();
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
  const int all = static_cast<int>(list_.count());
  const bool isControl = IsPressed(VK_CONTROL);
  if (key == VK_UP && !cell_.HasLine(-1)) return Walk(-1), true;
  if (key == VK_DOWN && !cell_.HasLine(1)) return Walk(1), true;
  if (key == VK_PRIOR) return Walk(-page), true;
  if (key == VK_NEXT) return Walk(page), true;
  if (key == VK_HOME && isControl) return Walk(-all), true;
  if (key == VK_END && isControl) return Walk(all), true;
  return false;
}

// First what is typed, then the form's steps.
void PropertyPane::Undo() {
  if (typed_) {
    cell_.UndoTyping();
  } else {
    design().Undo();
  }
}

bool PropertyPane::OnKey(UINT key) {
  if (cell_.IsDropped()) return false;
  const bool isControl = IsPressed(VK_CONTROL);
  if (key == VK_RETURN) return OnEnter();
  if (key == VK_ESCAPE) return OnEscape();
  if (key == VK_DELETE) return OnDelete();
  if (key == VK_F2) return OpenDialog(), true;
  if (key == VK_TAB && !isControl) return SetFocus(objects_.window()), true;
  if (key == 'Z' && isControl) return Undo(), true;
  if (key == 'Y' && isControl && !typed_) return design().Redo(), true;
  if (key == 'A' && isControl && !IsPressed(VK_SHIFT)) return cell_.SelectAll(), true;
  if (key >= 'A' && key <= 'Z' && isControl && IsPressed(VK_SHIFT)) {
    return JumpTo(static_cast<char>(key)), true;
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

}  // namespace

std::unique_ptr<Pane> MakePropertyPane(Workplace& place, HWND parent) {
  return std::make_unique<PropertyPane>(place, parent);
}

}  // namespace qrn::designer
