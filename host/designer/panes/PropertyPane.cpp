#include "host/designer/panes/PropertyPane.h"

// clang-format off
#include <windows.h>
#include <commctrl.h>
// clang-format on

#include <algorithm>
#include <utility>

#include "host/designer/panes/DialogValue.h"
#include "host/designer/panes/PaneTexts.h"

namespace qrn::designer {
namespace {

enum ChildId { kObjectsId = 10, kRowsId, kTitleId, kDescriptionId };
// To the pane itself, once what happens now is over.
enum OwnMessage : UINT { kGiveBack = WM_APP + 1, kTakeChosen, kTakeAside, kFocusCell };

constexpr int kObjectsHeight = 320;  // with the list dropped down
constexpr int kDescriptionLines = 3;
constexpr int kRowSpare = 3;

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

}  // namespace

PropertyPane::PropertyPane(Workplace& place, HWND parent)
    : place_(place), bold_(BoldOf(place.Font())), typed_(place) {
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
  typed_.ForgetAll();
  Refresh();
}

// --- What is shown.

void PropertyPane::Refresh() {
  rows_.Put(List().Rows(), hasPages_);
  if (typed_.PutAside()) PostMessageW(window(), kTakeAside, 0, 0);
  const bool choosing = std::exchange(isChoosing_, true);
  objects_.Show(design(), place_.language());
  list_.Show(rows_.Shown(place_.language()));
  if (rows_.chosen() < rows_.Count()) list_.Choose(rows_.chosen());
  isChoosing_ = choosing;
  if (!typed_.Stands()) ShowCell();
  PlaceCell();
}

void PropertyPane::ShowCell() {
  const PropertyRow* row = rows_.Chosen();
  if (rows_.chosen() >= rows_.Count()) {
    cell_.Hide();
  } else {
    cell_.Show(row ? FaceOf(*row) : CellFace{CellKind::Fixed, true, {}});
  }
  Describe();
}

void PropertyPane::PlaceCell() {
  const RECT place = list_.ValuePlace(rows_.chosen());
  if (IsRectEmpty(&place)) return cell_.Move({-1000, -1000, -900, -980});
  cell_.Move(place);
}

void PropertyPane::Describe() {
  std::string title;
  std::string description;
  if (const PropertyRow* row = rows_.Chosen()) {
    title = row->info->name;
    description = row->info->description;
  } else if (rows_.IsOnPages()) {
    title = Said(PaneText::CustomRow, place_.language());
    description = Said(PaneText::CustomHint, place_.language());
  }
  SetText(title_, title);
  SetText(description_, description);
}

void PropertyPane::Arrange() {
  const SIZE size = ClientSize();
  const int line = LineHeight(place_.Font());
  const int spare = Scaled(kRowSpare);
  PlaceWindow(objects_.window(), {0, 0, size.cx, Scaled(kObjectsHeight)});
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

RECT PropertyPane::PlaceOf(const std::string& property) {
  return rows_.Has(property) ? list_.ShownPlace(rows_.Of(property)) : RECT{};
}

// --- What is typed.

void PropertyPane::OnTyped() {
  const PropertyRow* row = rows_.Chosen();
  if (!cell_.IsFilling() && row) typed_.Put(*row, cell_.Text());
}

bool PropertyPane::Take() {
  const bool stood = typed_.Stands();
  const bool taken = typed_.Take();
  if (stood && taken) Refresh();
  return taken;
}

void PropertyPane::TakeAside() {
  if (!typed_.IsAside()) return;
  if (typed_.TakeAside()) {
    Refresh();
  } else {
    GiveBack();
  }
}

// Back to what was refused, with the reason.
void PropertyPane::GiveBack() {
  const auto refused = typed_.TakeRefused();
  if (!refused) return;
  typed_.Forget();
  design().Select(refused->ids);
  rows_.Want(refused->property);
  Refresh();
  cell_.PutText(refused->text);
  OnTyped();
  place_.Tell(refused->reason);
  cell_.TakeFocus();
}

bool PropertyPane::Settle() {
  TakeAside();
  if (Take()) return true;
  GiveBack();
  return false;
}

// The keyboard went elsewhere in the designer: what was typed is meant. Not so if another program
// or a dialog came in front.
void PropertyPane::OnLeft() {
  HWND now = GetFocus();
  const bool isHere = now && GetAncestor(now, GA_ROOT) == GetAncestor(window(), GA_ROOT);
  if (!isHere || cell_.Has(now) || !typed_.Stands() || typed_.IsRefused()) return;
  if (!Take()) PostMessageW(window(), kGiveBack, 0, 0);
}

void PropertyPane::Put(const Refusal& refusal) {
  design().Seal();
  Refresh();
  if (refusal) place_.Tell(refusal);
}

// --- Where the user is.

void PropertyPane::Choose(size_t row) {
  if (row >= rows_.Count()) return;
  if (!Take()) {
    PostMessageW(window(), kGiveBack, 0, 0);
    return;
  }
  rows_.Choose(row);
  const bool choosing = std::exchange(isChoosing_, true);
  list_.Choose(row);
  isChoosing_ = choosing;
  ShowCell();
  PlaceCell();
}

void PropertyPane::Walk(int steps) {
  if (rows_.Count() == 0 || !Settle()) return;
  const auto last = static_cast<long long>(rows_.Count()) - 1;
  const auto to = static_cast<long long>(rows_.chosen()) + steps;
  Choose(static_cast<size_t>(std::clamp<long long>(to, 0, last)));
  cell_.TakeFocus();
}

void PropertyPane::JumpTo(char letter) {
  if (!Settle()) return;
  Choose(rows_.NextWith(letter));
  cell_.TakeFocus();
}

// A double click: the next of the values that there are, or the dialog.
void PropertyPane::GoOn() {
  if (!Settle()) return;
  const PropertyRow* row = rows_.Chosen();
  const std::string next = row ? List().NextChoice(row->info->name) : std::string();
  if (next.empty()) return OpenDialog();
  Put(List().Enter(row->info->name, next));
  cell_.TakeFocus();
}

void PropertyPane::Reset() {
  const PropertyRow* row = rows_.Chosen();
  if (!row) return;
  typed_.Forget();
  Put(List().Reset(row->info->name));
}

void PropertyPane::OpenDialog() {
  if (!cell_.face().hasButton || rows_.chosen() >= rows_.Count() || !Settle()) return;
  if (const PropertyRow* row = rows_.Chosen()) {
    Put(EnterByDialog(place_, *row));
  } else {
    place_.ShowPages(design().Primary());
  }
  cell_.TakeFocus();
}

// --- Messages.

void PropertyPane::OnOffer() {
  if (const PropertyRow* row = rows_.Chosen()) cell_.Offer(List().Choices(row->info->name));
}

void PropertyPane::OnObject() {
  const ControlId chosen = objects_.Chosen();
  if (chosen != 0) design().Select({chosen});
}

void PropertyPane::OnCommand(int id, int code) {
  struct Row {
    int id;
    int code;
    void (*run)(PropertyPane& pane);
  };
  static constexpr Row kRows[] = {
      {ValueCell::kTextId, EN_CHANGE, [](PropertyPane& pane) { pane.OnTyped(); }},
      {ValueCell::kTextId, EN_KILLFOCUS, [](PropertyPane& pane) { pane.OnLeft(); }},
      {ValueCell::kChoiceId, CBN_EDITCHANGE, [](PropertyPane& pane) { pane.OnTyped(); }},
      {ValueCell::kChoiceId, CBN_KILLFOCUS, [](PropertyPane& pane) { pane.OnLeft(); }},
      {ValueCell::kChoiceId, CBN_DROPDOWN, [](PropertyPane& pane) { pane.OnOffer(); }},
      {ValueCell::kChoiceId, CBN_SELENDOK,
       [](PropertyPane& pane) { PostMessageW(pane.window(), kTakeChosen, 0, 0); }},
      {ValueCell::kButtonId, BN_CLICKED, [](PropertyPane& pane) { pane.OpenDialog(); }},
      {kObjectsId, CBN_SELCHANGE, [](PropertyPane& pane) { pane.OnObject(); }},
  };
  for (const Row& row : kRows) {
    if (row.id == id && row.code == code) return row.run(*this);
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
    case kTakeAside:
      TakeAside();
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

}  // namespace qrn::designer
