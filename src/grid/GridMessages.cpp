// The grid's messages: keys, mouse, bars, wheel, focus, and those of its edit box.
#include <algorithm>

#include "binding/tables/QRNGridTable.h"
#include "grid/QRNGrid.h"
#include "ole/InputState.h"
#include "ole/MousePointer.h"
#include "ole/Names.h"

namespace qrn {
namespace {

int32_t XOf(const com::Message& message) { return static_cast<int16_t>(LOWORD(message.lParam)); }
int32_t YOf(const com::Message& message) { return static_cast<int16_t>(HIWORD(message.lParam)); }

// Ends the message with what the system makes of it.
bool EndWithDefault(com::Message& message) {
  if (IsWindow(message.window)) {
    message.result = DefWindowProcW(message.window, message.id, message.wParam, message.lParam);
  }
  return true;
}

bool IsArrow(WPARAM key) noexcept { return key >= VK_LEFT && key <= VK_DOWN; }

}  // namespace

// In a designer, too. Events of the pointer are declared and never raised.
const com::MessageRow<CQRNGrid> CQRNGrid::kAlways[] = {
    {WM_ERASEBKGND, &CQRNGrid::OnEraseBackground}, {WM_LBUTTONDOWN, &CQRNGrid::OnPointer},
    {WM_LBUTTONUP, &CQRNGrid::OnPointer},          {WM_RBUTTONDOWN, &CQRNGrid::OnPointer},
    {WM_RBUTTONUP, &CQRNGrid::OnPointer},          {WM_MOUSEMOVE, &CQRNGrid::OnPointer},
};

const com::MessageRow<CQRNGrid> CQRNGrid::kGridMessages[] = {
    {WM_SETFOCUS, &CQRNGrid::OnFocusCame}, {WM_KILLFOCUS, &CQRNGrid::OnFocusWent},
    {WM_KEYDOWN, &CQRNGrid::OnKey},        {WM_LBUTTONDOWN, &CQRNGrid::OnButtonDown},
    {WM_LBUTTONUP, &CQRNGrid::OnButtonUp}, {WM_MOUSEMOVE, &CQRNGrid::OnMove},
    {WM_HSCROLL, &CQRNGrid::OnBar},        {WM_VSCROLL, &CQRNGrid::OnBar},
    {WM_MOUSEWHEEL, &CQRNGrid::OnWheel},   {WM_MOUSEHWHEEL, &CQRNGrid::OnWheel},
};

const com::MessageRow<CQRNGrid> CQRNGrid::kEditMessages[] = {
    {WM_MOUSEACTIVATE, &CQRNGrid::OnEditMouseActivate},
    {WM_SETFOCUS, &CQRNGrid::OnEditFocusCame},
    {WM_KILLFOCUS, &CQRNGrid::OnEditFocusWent},
    {WM_KEYDOWN, &CQRNGrid::OnEditKey},
    {WM_CHAR, &CQRNGrid::OnEditTyped},
    {WM_PASTE, &CQRNGrid::OnEditPaste},
    {EM_REPLACESEL, &CQRNGrid::OnEditReplace},
    {WM_MOUSEWHEEL, &CQRNGrid::OnWheel},
    {WM_MOUSEHWHEEL, &CQRNGrid::OnWheel},
    {WM_GETOBJECT, &CQRNGrid::OnGetObject},
};

template <class Work>
void CQRNGrid::Moving(Work work) {
  const int32_t row = Row;
  const int32_t col = Col;
  work();
  if (hwnd() && (row != Row || col != Col)) accessibility_.TellCurrent();
}

bool CQRNGrid::OnWindowMessage(com::Message& message) {
  if (UserMode() && Route(*this, kGridMessages, message)) return true;
  return Route(*this, kAlways, message) || BoundControl::OnWindowMessage(message);
}

bool CQRNGrid::OnContainedMessage(com::Message& message) {
  return Route(*this, kEditMessages, message);
}

bool CQRNGrid::OnEraseBackground(com::Message& message) {
  message.result = TRUE;
  return true;
}

bool CQRNGrid::OnPointer(com::Message& message) { return EndWithDefault(message); }

com::Com<IAccessible> CQRNGrid::MakeAccessible(HWND window) {
  return window == edit_.get() ? accessibility_.CellEdit(window) : accessibility_.Table();
}

std::wstring CQRNGrid::ReadName() const {
  const std::wstring label = ole::LabelBefore(hwnd());
  return label.empty() ? std::wstring(DbListTable.view()) : label;
}

void CQRNGrid::PlaceEdit() {
  if (AllowUpdate == 0 || !edit_.get()) return;
  editActive = 0;
  const GridView view(*this, UsableSize());
  if (!view.IsInView(Row, Col)) return HideEdit();
  const GridRect rect =
      TextRect(view.columns.Place(Col), view.rows.Place(Row), FrameDepth(Appearance, BorderStyle));
  const auto field = static_cast<size_t>(std::max(Col - FixedCols, 0));
  const bool outer = std::exchange(movingEdit_, true);
  edit_.PlaceOn(rect, CellText(Row, Col), CellMaxLength.Get(field), GetIMEMode(Col));
  movingEdit_ = outer;
  if (!edit_.get()) return;  // who hears of the focus may end the form
  KeepEditText();
  editActive = 1;
}

void CQRNGrid::HideEdit() {
  editActive = 0;
  const bool outer = std::exchange(movingEdit_, true);
  edit_.Hide();
  movingEdit_ = outer;
}

bool CQRNGrid::OnFocusCame(com::Message&) {
  FocusCame();
  if (!movingEdit_ && HasFocusItself()) PlaceEdit();
  Repaint();
  return true;
}

bool CQRNGrid::OnFocusWent(com::Message& message) {
  LeaveFor(reinterpret_cast<HWND>(message.wParam));
  return true;
}

// The row is written before the container hears that the control is left. Moves between the grid,
// its box and its bars are none of its business.
void CQRNGrid::LeaveFor(HWND window) {
  if (window && (window == hwnd() || IsChild(hwnd(), window))) return;
  if (editActive != 0) {
    CommitCell();
    CommitRow(Row);
    editActive = 0;
  }
  FocusWent(window);
  Repaint();
}

bool CQRNGrid::OnEditMouseActivate(com::Message&) {
  if (UserMode()) inPlace().Activate(true);
  return false;
}

// A box that was left and gets the focus straight back, from a form that is active again, takes
// the cell up anew.
bool CQRNGrid::OnEditFocusCame(com::Message&) {
  FocusCame();
  edit_.FocusCame();
  if (!movingEdit_ && editActive == 0 && edit_.HasFocus()) PlaceEdit();
  return false;
}

bool CQRNGrid::OnEditFocusWent(com::Message& message) {
  edit_.FocusWent();
  LeaveFor(reinterpret_cast<HWND>(message.wParam));
  return false;
}

bool CQRNGrid::OnKey(com::Message& message) {
  bool taken = false;
  Moving([&] { taken = keys_.OnGridKey(static_cast<uint32_t>(message.wParam)); });
  return taken || EndWithDefault(message);
}

bool CQRNGrid::OnEditKey(com::Message& message) {
  bool taken = false;
  const EditCaret caret = edit_.Caret();
  Moving([&] { taken = keys_.OnEditKey(static_cast<uint32_t>(message.wParam), caret); });
  return taken;
}

bool CQRNGrid::OnButtonDown(com::Message& message) {
  // A bar that was clicked has the keyboard, and not what shows the current cell.
  if (!HasFocusItself() && !edit_.HasFocus()) SetFocus(hwnd());
  Moving([&] { mouse_.Press(XOf(message), YOf(message)); });
  PlaceEdit();
  ole::Fire<kQRNGridTable, "Click">(*this);
  Repaint();
  return EndWithDefault(message);
}

bool CQRNGrid::OnButtonUp(com::Message& message) {
  mouse_.Release();
  return EndWithDefault(message);
}

bool CQRNGrid::OnMove(com::Message& message) {
  mouse_.Move((message.wParam & MK_LBUTTON) != 0, XOf(message), YOf(message));
  return EndWithDefault(message);
}

void CQRNGrid::ShowResizeCursor(GridDirection direction) {
  const bool across = direction == GridDirection::Horizontal;
  const HCURSOR own = across ? columnCursor_.get() : rowCursor_.get();
  SetCursor(own ? own : LoadCursorA(nullptr, across ? IDC_SIZEWE : IDC_SIZENS));
}

void CQRNGrid::ShowPointer() {
  const com::Com<IPictureDisp> icon = MouseIcon;
  if (ole::MapMousePointer(MousePointer, icon.get())) return;
  SetCursor(LoadCursorA(nullptr, IDC_ARROW));
}

bool CQRNGrid::OnBar(com::Message& message) {
  const auto direction =
      message.id == WM_HSCROLL ? GridDirection::Horizontal : GridDirection::Vertical;
  const WORD notice = LOWORD(message.wParam);
  const int32_t thumb = bars_.Thumb(direction, HIWORD(message.wParam));
  Moving([&] { scroll_.OnNotice(direction, notice, thumb, bars_.Range(direction)); });
  if (notice == SB_ENDSCROLL && GetFocus() == bars_.Of(direction)) SetFocus(hwnd());
  return true;
}

// As many lines a notch as the user has set, at most those that show.
bool CQRNGrid::OnWheel(com::Message& message) {
  const bool across = message.id == WM_MOUSEHWHEEL || (message.wParam & MK_SHIFT) != 0;
  const auto direction = across ? GridDirection::Horizontal : GridDirection::Vertical;
  UINT lines = 3;
  SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
  const GridView view(*this, UsableSize());
  const size_t shown = across ? 1 : view.rows.ShownScrolling(view.usable.height).size();
  const auto step = static_cast<int32_t>(std::clamp<size_t>(lines, 1, std::max<size_t>(shown, 1)));
  const int32_t turn = static_cast<int16_t>(HIWORD(message.wParam));
  int32_t& rest = wheelRest_[across ? 1 : 0];
  rest += (message.id == WM_MOUSEHWHEEL ? turn : -turn) * step;
  const int32_t by = rest / WHEEL_DELTA;
  rest -= by * WHEEL_DELTA;
  ScrollBy(direction, by);
  return true;
}

void CQRNGrid::ScrollBy(GridDirection direction, int32_t lines) {
  const uint32_t notice = lines < 0 ? kLineBack : kLineOn;
  for (int32_t left = std::abs(lines); left > 0; --left) {
    Moving([&] { scroll_.OnNotice(direction, notice, 0, bars_.Range(direction)); });
  }
}

HRESULT CQRNGrid::OnAccelerator(MSG& message) {
  if (!UserMode()) return OfferToSite(message);
  if (message.message == WM_KEYDOWN) return OnOfferedKeyDown(message);
  if (message.message == WM_KEYUP) return OnOfferedKeyUp(message);
  return BoundControl::OnAccelerator(message);
}

HRESULT CQRNGrid::OnOfferedKeyDown(MSG& message) {
  auto code = static_cast<int16_t>(message.wParam);
  ole::Fire<kQRNGridTable, "KeyDown">(*this, &code, ole::KeyShift());
  if (code == 0) return S_OK;
  return IsArrow(message.wParam) ? S_FALSE : OfferToSite(message);
}

// Kept so: the key deletes when it goes down and, where a handler has kept the record, once more
// when it comes up.
HRESULT CQRNGrid::OnOfferedKeyUp(MSG& message) {
  auto code = static_cast<int16_t>(message.wParam);
  ole::Fire<kQRNGridTable, "KeyUp">(*this, &code, ole::KeyShift());
  if (code == 0) return S_OK;
  const HRESULT result = OfferToSite(message);
  if (message.wParam == VK_DELETE) {
    Moving([&] { DeleteCurrentRow(); });
    PlaceEdit();
  }
  return result;
}

// As a press on the cell does, without the mouse.
void CQRNGrid::ChooseCell(int32_t row, int32_t col) {
  if (!hwnd() || row < FixedRows || row >= Rows || col < FixedCols || col >= Cols) return;
  const com::Com<IUnknown> alive(&Outer());
  inPlace().Activate(true);
  Moving([&] {
    const int32_t left = Row;
    CommitCell();
    if (left != row) CommitRow(left);
    Row = row;
    Col = col;
  });
  PlaceEdit();
  Repaint();
}

}  // namespace qrn
