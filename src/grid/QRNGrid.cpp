// The grid control: its rows, what the model and the data ask of it, what it shows.
#include "grid/QRNGrid.h"

#include <olectl.h>

#include "binding/BtrieveError.h"
#include "binding/registry/ControlRegistry.h"
#include "binding/tables/QRNGridTable.h"
#include "controls/HostFormat.h"
#include "ole/Names.h"
#include "platform/CodePage.h"

namespace qrn {
namespace {

using C = CQRNGrid;
using ole::Field;
using ole::Pair;

HRESULT AsHresult(GridResult result) noexcept { return static_cast<HRESULT>(result); }

}  // namespace

template <auto Get, class T>
HRESULT CQRNGrid::ReadAt(int32_t index, T& value) {
  if constexpr (std::is_invocable_v<decltype(Get), GridModel&, int32_t, T&>) {
    return AsHresult((this->*Get)(index, value));
  } else {
    value = (this->*Get)(index);
    return S_OK;
  }
}

template <auto Put, class T>
HRESULT CQRNGrid::WriteAt(int32_t index, T value) {
  if constexpr (std::is_void_v<std::invoke_result_t<decltype(Put), GridModel&, int32_t, T>>) {
    (this->*Put)(index, value);
    return S_OK;
  } else {
    return AsHresult((this->*Put)(index, value));
  }
}

namespace {

template <auto Get, auto Put, class T>
constexpr ole::PropertyAccess kIndexed = Pair<&C::ReadAt<Get, T>, &C::WriteAt<Put, T>>;

// clang-format off
constexpr ole::PropertyEntry kAccess[] = {
    {ole::stock::kText, Pair<&C::GetCellText, &C::PutCellText>},
    { 1, Field<&C::DbListSource>},
    { 2, Field<&C::DbListTable>},
    { 3, ole::FieldAndPut<&C::DbListFields, &C::PutDbListFields>},
    { 4, Field<&GridState::SelStartCol, C>},
    { 5, Field<&GridState::SelEndCol, C>},
    { 6, Field<&GridState::SelStartRow, C>},
    { 7, Field<&GridState::SelEndRow, C>},
    { 8, Field<&C::DbConditions>},
    { 9, Field<&GridState::Abort, C>},
    {10, Pair<&C::GetCols, &C::PutColumnCount>},
    {11, Pair<&C::GetRows, &C::PutRowCount>},
    {12, Pair<&C::GetFixedCols, &C::PutFixedColumnCount>},
    {13, Pair<&C::GetFixedRows, &C::PutFixedRowCount>},
    {14, Field<&GridState::DbCompareCase, C>},
    {15, Field<&GridState::DbExOperation, C>},
    {16, Field<&GridState::DbLeaveResults, C>},
    {17, Field<&GridState::DbLocks, C>},
    {18, Field<&GridState::DbResultID, C>},
    {19, Field<&GridState::DbMaxRecords, C>},
    {20, Field<&GridState::DbSkipRecords, C>},
    {21, Field<&GridState::DbUpdateOption, C>},
    {22, Field<&GridState::GridLines, C>},
    {23, Field<&GridState::HighLight, C>},
    {24, Field<&GridState::FillStyle, C>},
    {25, Field<&GridState::GridLineWidth, C>},
    {26, Field<&GridState::Col, C>},
    {27, Field<&GridState::Row, C>},
    {28, Field<&GridState::SetColNames, C>},
    {29, Field<&GridState::SetRecordNumbers, C>},
    {30, Field<&C::DbListIndex>},
    {31, Field<&GridState::ScrollBars, C>},
    {32, kIndexed<&GridModel::GetRowHeight, &GridModel::PutRowHeight, int32_t>},
    {33, kIndexed<&GridModel::GetColWidth, &GridModel::PutColWidth, int32_t>},
    {36, Pair<&C::GetFormatText, &C::PutFormatText>},
    {37, Field<&GridState::AllowUpdate, C>},
    {38, Field<&GridState::AllowDelete, C>},
    {39, kIndexed<&GridModel::GetCellMaxLength, &GridModel::PutCellMaxLength, int16_t>},
    {40, ole::Getter<&C::ReadAt<&GridModel::GetPhysicalPosition, int32_t>>},
    {41, kIndexed<&GridModel::GetTextAlign, &GridModel::PutTextAlign, int16_t>},
    {42, Field<&GridState::AlignFixedCells, C>},
    {43, kIndexed<&GridModel::GetIMEMode, &GridModel::PutIMEMode, int32_t>},
    {44, Field<&GridState::SetColWidth, C>},
    {45, Field<&GridState::AllowUserResizing, C>},
};
constexpr ole::MethodEntry kMethods[] = {
    {ole::stock::kRefresh, ole::Method<&C::Refresh>},
    {35, ole::Method<&C::EmptyCells>},
    {46, ole::Method<&C::Refresh>},
};
// clang-format on
constexpr auto kProperties = ole::BindProperties<kQRNGridTable>(kAccess, ole::kStockAccess);
constexpr auto kBoundMethods = ole::BindMethods<kQRNGridTable>(kMethods);
constexpr ole::Binding kBinding{kProperties, kBoundMethods};

constexpr ole::StockDefaults kGridLook{0xFFFFFF, 0x80000012};

constexpr WORD kColumnCursor = 116;
constexpr WORD kRowCursor = 117;

com::Cursor OwnCursor(WORD id) noexcept {
  return com::Cursor(static_cast<HCURSOR>(
      LoadImageW(com::ModuleInstance(), MAKEINTRESOURCEW(id), IMAGE_CURSOR, 0, 0, 0)));
}

}  // namespace

CQRNGrid::CQRNGrid()
    : BoundControl(kQRNGridTable, kBinding, kGridLook),
      GridModel(static_cast<GridHost&>(*this)),
      data_(*this, TheEngine()),
      columnCursor_(OwnCursor(kColumnCursor)),
      rowCursor_(OwnCursor(kRowCursor)) {}

HRESULT CQRNGrid::TakeSize(GridResult result, int32_t& count, int32_t value, int32_t capacity) {
  if (result == GridResult::Done || !persistence().loading() || value > capacity) {
    return AsHresult(result);
  }
  count = value;
  return S_OK;
}

HRESULT CQRNGrid::PutColumnCount(int32_t cols) {
  return TakeSize(PutCols(cols), Cols, cols, maxCols());
}
HRESULT CQRNGrid::PutRowCount(int32_t rows) {
  return TakeSize(PutRows(rows), Rows, rows, maxRows());
}
HRESULT CQRNGrid::PutFixedColumnCount(int32_t cols) {
  return TakeSize(PutFixedCols(cols), FixedCols, cols, maxCols());
}
HRESULT CQRNGrid::PutFixedRowCount(int32_t rows) {
  return TakeSize(PutFixedRows(rows), FixedRows, rows, maxRows());
}

void CQRNGrid::PutDbListFields(const com::Bstr& names) {
  DbListFields = names;
  const int32_t before = Cols;
  MakeRoomForFields(NarrowText(names));
  if (Cols != before) Changed(ole::IdOf<kQRNGridTable, "Cols">, true);
}

// Where there is no current cell the host's variable stays as it is.
HRESULT CQRNGrid::GetCellText(com::Bstr& text) {
  std::string bytes;
  if (GetText(bytes)) text = WidenToBstr(bytes);
  return S_OK;
}

void CQRNGrid::PutCellText(const com::Bstr& text) { PutText(NarrowText(text)); }

HRESULT CQRNGrid::GetFormatText(int32_t col, com::Bstr& format) {
  std::string bytes;
  const HRESULT result = AsHresult(GetFormatString(col, bytes));
  if (SUCCEEDED(result)) format = WidenToBstr(bytes);
  return result;
}

void CQRNGrid::PutFormatText(int32_t col, const com::Bstr& format) {
  PutFormatString(col, NarrowText(format));
}

void CQRNGrid::ReloadList() {
  const com::Com<IUnknown> alive(&Outer());
  data_.ReloadList();
}

void CQRNGrid::OnContainedMade() {
  constexpr uint32_t kCentred = DT_VCENTER;
  if (created == 0 && AllowUpdate == 0) drawTextFlags |= kCentred;
  Create();
}

void CQRNGrid::OnRegister() {
  TheRegistry().RegisterListControl(*this);
  if (DbUpdateOption != kGridUpdateNone) ReloadList();
  if (!hwnd()) return;  // a handler of the fill may have ended the form
  LayOutBars(true);
  if (AllowUpdate != 0) edit_.Make(hwnd(), GetFont());
}

void CQRNGrid::OnUnregister() {
  TheRegistry().UnregisterListControl(*this);
  editActive = 0;
  edit_.Destroy();
  bars_.Forget();
}

void CQRNGrid::OnChanged(int32_t id) {
  BoundControl::OnChanged(id);
  const bool laidOut = id == ole::stock::kAppearance || id == ole::stock::kBorderStyle ||
                       id == ole::IdOf<kQRNGridTable, "ScrollBars">;
  if (laidOut) {
    LayOutBars(true);
    Repaint();
  }
  if (id == ole::stock::kFont) TakeFont();
}

void CQRNGrid::TakeFont() {
  drawnFont_ = com::FontInUse(GetFont());
  edit_.SetFont(GetFont());
}

void CQRNGrid::LayOut(const RECT&) {
  if (!UserMode()) return;
  LayOutBars(false);
  Repaint();
}

// Bars are for who uses the form: a designer has none.
void CQRNGrid::LayOutBars(bool resetPositions) {
  const GridSize size = WindowSize();
  if (created == 0 || !UserMode() || size.IsEmpty()) return;
  const GridSize cells{ColumnsOf(*this).MeasureAll(), RowsOf(*this).MeasureAll()};
  const int32_t depth = FrameDepth(Appearance, BorderStyle);
  const GridBars bars = ChooseBars(ScrollBars, size, cells);
  bars_.LayOut(hwnd(), size, depth, bars);
  if (!bars.vertical) TopRow = FixedRows;
  if (!bars.horizontal) LeftCol = FixedCols;
  bars_.SetRanges(*this, FrameOf(size, depth, bars).inner.height);
  if (!resetPositions) return;
  vScrollPos = hScrollPos = 1;
  bars_.SetPosition(GridDirection::Vertical, 1);
  bars_.SetPosition(GridDirection::Horizontal, 1);
}

GridSize CQRNGrid::WindowSize() const noexcept {
  RECT client{};
  if (hwnd()) GetClientRect(hwnd(), &client);
  return {client.right, client.bottom};
}

GridSize CQRNGrid::UsableSize() const {
  return FrameOf(WindowSize(), FrameDepth(Appearance, BorderStyle), bars_.shown()).usable;
}

GridLook CQRNGrid::Look(GridSize size) {
  if (!drawnFont_.get()) drawnFont_ = com::FontInUse(GetFont());
  return {.window = size,
          .bars = bars_.shown(),
          .appearance = Appearance,
          .borderStyle = BorderStyle,
          .backColor = BackColor,
          .foreColor = ForeColor,
          .font = drawnFont_.get(),
          .runs = UserMode(),
          .hasFocus = HasFocusItself()};
}

void CQRNGrid::OnDraw(HDC dc, const RECT& rect) {
  const com::MovedOrigin origin(dc, rect.left, rect.top);
  GridLook look = Look({rect.right - rect.left, rect.bottom - rect.top});
  if (!look.runs && look.hasFocus) look.hasFocus = !std::exchange(focusDrawnInDesigner_, true);
  GridPainter(dc, *this, look).Paint();
}

template <class Draw>
void CQRNGrid::DrawNow(Draw draw) {
  if (!hwnd()) return;
  const GridLook look = Look(WindowSize());
  const com::WindowDc dc(hwnd());
  GridPainter painter(dc.get(), *this, look);
  draw(painter);
}

void CQRNGrid::RepaintCurrentCell() {
  DrawNow([](GridPainter& painter) { painter.RepaintCurrentCell(); });
}

// Where the edit box is the cursor there is no rectangle.
void CQRNGrid::ToggleFocus() {
  if (AllowUpdate != 0 || !HasFocusItself()) return;
  DrawNow([](GridPainter& painter) { painter.ToggleFocus(); });
}

void CQRNGrid::PaintSelected(int32_t row, int32_t col, int32_t otherRow, int32_t otherCol) {
  if (HighLight == 0) return;
  const GridRange range{std::min(row, otherRow), std::min(col, otherCol),
                        std::max(row, otherRow) + 1, std::max(col, otherCol) + 1};
  DrawNow([&](GridPainter& painter) { painter.PaintSelected(range); });
}

void CQRNGrid::Repaint() {
  if (hwnd()) InvalidateRect(hwnd(), nullptr, FALSE);
}

void CQRNGrid::ShowFilled() {
  HideEdit();
  LayOutBars(false);
  Repaint();
}

void CQRNGrid::InvertLine(GridDirection direction, int32_t place, int32_t length) {
  if (!hwnd()) return;
  const com::WindowDc dc(hwnd());
  if (direction == GridDirection::Horizontal) {
    BitBlt(dc.get(), place, 0, 1, length, nullptr, 0, 0, DSTINVERT);
  } else {
    BitBlt(dc.get(), 0, place, length, 1, nullptr, 0, 0, DSTINVERT);
  }
}

void CQRNGrid::ShowBarPosition(GridDirection direction) {
  const bool across = direction == GridDirection::Horizontal;
  bars_.SetPosition(direction, across ? hScrollPos : vScrollPos);
}

int32_t CQRNGrid::NameWidthPx(std::string_view name) {
  const int32_t beside = Appearance != 0 ? 3 : 1;
  const GridLook look = Look(WindowSize());
  const com::WindowDc dc(hwnd());
  const com::Selected font(dc.get(), look.font);
  const std::u16string wide = CodePageToUtf16(name);
  SIZE size{};
  GetTextExtentPoint32W(dc.get(), com::AsWide(wide).data(), static_cast<int>(wide.size()), &size);
  return size.cx + beside;
}

bool CQRNGrid::IsInPlace() const { return const_cast<CQRNGrid*>(this)->inPlace().active(); }

GridNames CQRNGrid::Names() {
  return {.source = NarrowText(DbListSource),
          .table = NarrowText(DbListTable),
          .index = NarrowText(DbListIndex),
          .fields = NarrowText(DbListFields),
          .conditions = NarrowText(DbConditions)};
}

DbTableInfo* CQRNGrid::FindTable(const GridNames& names) {
  return TheRegistry().ResolveTable(GetContainerWindow(), names.source, names.table);
}

bool CQRNGrid::OpenTable(DbTableInfo& table, const GridNames& names) {
  return table.IsOpen != 0 ||
         TheRegistry().DbOpenOnDemand(table, GetContainerWindow(), names.source) == 0;
}

std::optional<std::string> CQRNGrid::FormatCell(std::string_view text, std::string_view format) {
  return FormatThroughHost(site(), std::string(text), WidenToBstr(format), kJapaneseLanguage);
}

void CQRNGrid::RaiseFormat(std::u16string& text) {
  com::Bstr line(com::AsWide(text));
  ole::Fire<kQRNGridTable, "Format">(*this, &line);
  text = com::AsUtf16(line.view());
}

Status CQRNGrid::RaiseBtrieveError(std::string_view tableName, Status status) {
  return TellBtrieveError<kQRNGridTable>(*this, tableName, status);
}

bool CQRNGrid::RaiseBeforeColUpdate(const std::string& text) {
  int16_t cancel = 0;
  const com::Bstr value = WidenToBstr(text);
  ole::Fire<kQRNGridTable, "BeforeColUpdate">(*this, &cancel, value.get());
  return cancel != 0;
}

bool CQRNGrid::RaiseBeforeUpdate() {
  int16_t cancel = 0;
  ole::Fire<kQRNGridTable, "BeforeUpdate">(*this, &cancel);
  return cancel != 0;
}

bool CQRNGrid::RaiseBeforeDelete() {
  int16_t cancel = 0;
  ole::Fire<kQRNGridTable, "BeforeDelete">(*this, &cancel);
  return cancel != 0;
}

void CQRNGrid::Raise(GridEvent event) {
  switch (event) {
    case GridEvent::AfterColUpdate:
      return ole::Fire<kQRNGridTable, "AfterColUpdate">(*this);
    case GridEvent::AfterUpdate:
      return ole::Fire<kQRNGridTable, "AfterUpdate">(*this);
    case GridEvent::AfterDelete:
      return ole::Fire<kQRNGridTable, "AfterDelete">(*this);
  }
}

void CQRNGrid::RaiseChange() { ole::Fire<kQRNGridTable, "Change">(*this); }
void CQRNGrid::RaiseSelChange() { ole::Fire<kQRNGridTable, "SelChange">(*this); }

}  // namespace qrn
