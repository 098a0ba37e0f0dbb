#include "grid/GridPaint.h"

#include <algorithm>
#include <string>

#include "platform/CodePage.h"

namespace qrn {
namespace {

using com::Brush;
using com::Clipped;
using com::MovedOrigin;
using com::Pen;
using com::Selected;

constexpr COLORREF kOutline = RGB(0, 0, 0);
constexpr COLORREF kCellLine = 0x808080;
constexpr COLORREF kBevelLight = 0xFFFFFF;
constexpr COLORREF kBevelDark = 0x606060;
constexpr COLORREF kSelection = 0xFFFF00;

// The highest bit says that the others number one of the system's colours.
COLORREF ColorOf(uint32_t color) noexcept {
  constexpr uint32_t kSystem = 0x80000000;
  constexpr uint32_t kNumber = 0xFFFFFF;
  return color & kSystem ? GetSysColor(static_cast<int>(color & kNumber)) : color & kNumber;
}

RECT RectOf(TrackSpan column, TrackSpan row) noexcept {
  const GridRect text = TextRect(column, row, 0);
  return {text.left, text.top, text.right, text.bottom};
}

// Colours and font of texts until scope end. The rectangle of the focus takes its dots from them.
class TextLook {
 public:
  TextLook(HDC dc, HFONT font, uint32_t color)
      : dc_(dc),
        font_(dc, font ? static_cast<HGDIOBJ>(font) : GetStockObject(DEFAULT_GUI_FONT)),
        color_(SetTextColor(dc, ColorOf(color))),
        mode_(SetBkMode(dc, TRANSPARENT)) {}
  TextLook(const TextLook&) = delete;
  TextLook& operator=(const TextLook&) = delete;
  ~TextLook() {
    SetBkMode(dc_, mode_);
    SetTextColor(dc_, color_);
  }

 private:
  HDC dc_;
  Selected font_;
  COLORREF color_;
  int mode_;
};

void DrawFocus(HDC dc, const RECT& rect) {
  const COLORREF text = SetTextColor(dc, RGB(0, 0, 0));
  const COLORREF back = SetBkColor(dc, RGB(255, 255, 255));
  DrawFocusRect(dc, &rect);
  SetBkColor(dc, back);
  SetTextColor(dc, text);
}

// Inside the frame, and nowhere else, until scope end.
class InCells {
 public:
  InCells(HDC dc, const GridFrame& frame) noexcept
      : origin_(dc, frame.depth, frame.depth),
        clipped_(dc, {0, 0, frame.usable.width, frame.usable.height}) {}

 private:
  MovedOrigin origin_;
  Clipped clipped_;
};

// The tracks of a range among those that show.
std::vector<PlacedTrack> Within(std::vector<PlacedTrack> shown, int32_t first, int32_t end) {
  std::erase_if(shown,
                [&](const PlacedTrack& each) { return each.index < first || each.index >= end; });
  return shown;
}

}  // namespace

GridPainter::GridPainter(HDC dc, const GridModel& model, const GridLook& look)
    : dc_(dc),
      model_(model),
      look_(look),
      frame_(look.Frame()),
      columns_(ColumnsOf(model)),
      rows_(RowsOf(model)),
      drawn_{std::min(columns_.End(frame_.usable.width), frame_.usable.width),
             std::min(rows_.End(frame_.usable.height), frame_.usable.height)} {}

void GridPainter::Paint() {
  DrawFrame();
  if (frame_.inner.IsEmpty()) return;
  {
    const InCells inside(dc_, frame_);
    DrawGrid();
    if (look_.runs) DrawSelection();
  }
  if (look_.runs && look_.bars.horizontal && look_.bars.vertical) DrawCorner();
}

void GridPainter::DrawFrame() {
  RECT rect{0, 0, look_.window.width, look_.window.height};
  if (look_.borderStyle != 0) {
    const Pen pen(CreatePen(PS_SOLID, 1, kOutline));
    const Selected line(dc_, pen.get());
    const Selected hollow(dc_, GetStockObject(NULL_BRUSH));
    Rectangle(dc_, rect.left, rect.top, rect.right, rect.bottom);
  }
  if (look_.appearance != 0) DrawEdge(dc_, &rect, EDGE_SUNKEN, BF_RECT);
}

void GridPainter::DrawGrid() {
  FillGray({0, 0, frame_.usable.width, frame_.usable.height});
  if (model_.Rows <= 0 || model_.Cols <= 0) return;
  if (model_.GridLines != 0) {
    DrawBandEdges();
    DrawBandLines();
    if (look_.appearance != 0) DrawBevels();
  }
  DrawBandTexts();
  DrawRange({model_.TopRow, model_.LeftCol, model_.Rows, model_.Cols}, ColorOf(look_.backColor));
  if (look_.hasFocus) DrawFocusOfCurrent();
}

void GridPainter::Line(int32_t fromX, int32_t fromY, int32_t toX, int32_t toY) {
  MoveToEx(dc_, fromX, fromY, nullptr);
  LineTo(dc_, toX, toY);
}

// Along the last row and the last column, where these end inside.
void GridPainter::DrawBandEdges() {
  const Pen pen(CreatePen(PS_SOLID, model_.GridLineWidth, kOutline));
  const Selected line(dc_, pen.get());
  const int32_t right = columns_.End(frame_.usable.width);
  const int32_t bottom = rows_.End(frame_.usable.height);
  if (bottom < frame_.usable.height) Line(0, bottom, drawn_.width, bottom);
  if (right < frame_.usable.width) Line(right, 0, right, drawn_.height + 1);
}

void GridPainter::DrawBandLines() {
  const Pen pen(CreatePen(PS_SOLID, model_.GridLineWidth, kOutline));
  const Selected line(dc_, pen.get());
  const auto across = [&](const std::vector<PlacedTrack>& rows, int32_t width) {
    for (const PlacedTrack& row : rows)
      Line(0, row.span.end, std::min(width, drawn_.width), row.span.end);
  };
  const auto down = [&](const std::vector<PlacedTrack>& columns, int32_t height) {
    for (const PlacedTrack& column : columns) {
      Line(column.span.end, 0, column.span.end, std::min(height, drawn_.height));
    }
  };
  across(rows_.ShownFixed(drawn_.height), drawn_.width);
  down(columns_.ShownFixed(drawn_.width), drawn_.height);
  across(rows_.ShownScrolling(drawn_.height), model_.fixedColsWidth);
  down(columns_.ShownScrolling(drawn_.width), model_.fixedRowsHeight);
}

void GridPainter::DrawBevels() {
  const auto fixedRows = rows_.ShownFixed(drawn_.height);
  const auto otherRows = rows_.ShownScrolling(drawn_.height);
  for (const PlacedTrack& column : columns_.ShownFixed(drawn_.width)) {
    for (const PlacedTrack& row : fixedRows) DrawBevel(column.span, row.span);
    for (const PlacedTrack& row : otherRows) DrawBevel(column.span, row.span);
  }
  for (const PlacedTrack& column : columns_.ShownScrolling(drawn_.width)) {
    for (const PlacedTrack& row : fixedRows) DrawBevel(column.span, row.span);
  }
}

void GridPainter::DrawBevel(TrackSpan column, TrackSpan row) {
  const RECT cell{column.start + 1, row.start + 1, column.end - 1, row.end - 1};
  const Pen light(CreatePen(PS_SOLID, 1, kBevelLight));
  const Pen dark(CreatePen(PS_SOLID, 1, kBevelDark));
  {
    const Selected line(dc_, light.get());
    Line(cell.left, cell.top, cell.right, cell.top);
    Line(cell.left, cell.top, cell.left, cell.bottom);
  }
  const Selected line(dc_, dark.get());
  Line(cell.left, cell.bottom, cell.right + 1, cell.bottom);
  Line(cell.right, cell.top, cell.right, cell.bottom);
}

void GridPainter::DrawBandTexts() {
  const auto fixedRows = rows_.ShownFixed(drawn_.height);
  const auto fixedColumns = columns_.ShownFixed(drawn_.width);
  const int32_t inset = look_.appearance != 0 ? 1 : 0;
  const bool aligned = model_.AlignFixedCells != 0;
  DrawTexts(fixedColumns, fixedRows, inset, aligned);
  DrawTexts(fixedColumns, rows_.ShownScrolling(drawn_.height), inset, aligned);
  DrawTexts(columns_.ShownScrolling(drawn_.width), fixedRows, inset, aligned);
}

void GridPainter::DrawTexts(const std::vector<PlacedTrack>& columns,
                            const std::vector<PlacedTrack>& rows, int32_t inset, bool aligned) {
  if (!model_.HasCells()) return;
  const TextLook look(dc_, look_.font, look_.foreColor);
  for (const PlacedTrack& row : rows) {
    for (const PlacedTrack& column : columns) {
      const char* text = model_.CellText(row.index, column.index);
      if (text == nullptr) continue;
      RECT rect = RectOf(column.span, row.span);
      InflateRect(&rect, -inset, -inset);
      DrawText(text, rect, aligned ? AlignmentOf(column.index) : DT_LEFT);
    }
  }
}

UINT GridPainter::AlignmentOf(int32_t col) const noexcept {
  switch (model_.GetTextAlign(col)) {
    case kAlignRight:
      return DT_RIGHT;
    case kAlignCentre:
      return DT_CENTER;
    default:
      return DT_LEFT;
  }
}

void GridPainter::DrawText(const char* text, RECT rect, UINT alignment) {
  const std::u16string wide = CodePageToUtf16(text);
  DrawTextW(dc_, reinterpret_cast<const wchar_t*>(wide.data()), static_cast<int>(wide.size()),
            &rect, model_.drawTextFlags | alignment);
}

void GridPainter::DrawRange(const GridRange& range, COLORREF color) {
  if (frame_.inner.IsEmpty()) return;
  const auto columns = Within(columns_.ShownScrolling(drawn_.width), range.firstCol, range.endCol);
  const auto rows = Within(rows_.ShownScrolling(drawn_.height), range.firstRow, range.endRow);
  if (columns.empty() || rows.empty()) return;
  RECT area = RectOf({columns.front().span.start, columns.back().span.end},
                     {rows.front().span.start, rows.back().span.end});
  area.right = std::min<LONG>(area.right, frame_.usable.width);
  area.bottom = std::min<LONG>(area.bottom, frame_.usable.height);
  const Brush brush(CreateSolidBrush(color));
  FillRect(dc_, &area, brush.get());
  if (model_.GridLines != 0) DrawRangeLines(columns, rows, area);
  DrawTexts(columns, rows, 0, true);
}

// Between the tracks of the range: what surrounds it has its own lines.
void GridPainter::DrawRangeLines(const std::vector<PlacedTrack>& columns,
                                 const std::vector<PlacedTrack>& rows, const RECT& area) {
  const Pen pen(CreatePen(PS_SOLID, model_.GridLineWidth, kCellLine));
  const Selected line(dc_, pen.get());
  for (size_t i = 1; i < rows.size(); ++i) {
    Line(area.left, rows[i].span.start, area.right, rows[i].span.start);
  }
  for (size_t i = 1; i < columns.size(); ++i) {
    Line(columns[i].span.start, area.top, columns[i].span.start, area.bottom);
  }
}

void GridPainter::PaintSelected(const GridRange& range) {
  const InCells inside(dc_, frame_);
  DrawRange(range, kSelection);
}

void GridPainter::DrawSelection() {
  const bool starts =
      model_.SelStartRow >= model_.FixedRows && model_.SelStartCol >= model_.FixedCols;
  const bool ends = model_.SelEndRow >= model_.FixedRows && model_.SelEndCol >= model_.FixedCols;
  if (model_.HighLight == 0 || !starts || !ends) return;
  const auto endOf = [](int32_t end, int32_t count) { return end >= count ? end : end + 1; };
  const GridRange range{std::max(model_.SelStartRow, model_.TopRow),
                        std::max(model_.SelStartCol, model_.LeftCol),
                        endOf(model_.SelEndRow, model_.Rows), endOf(model_.SelEndCol, model_.Cols)};
  if (range.firstRow >= range.endRow || range.firstCol >= range.endCol) return;
  DrawRange(range, kSelection);
  const bool atCurrent = range.firstRow == model_.Row && range.firstCol == model_.Col;
  if (atCurrent && look_.hasFocus) DrawFocusOfCurrent();
}

void GridPainter::DrawCorner() {
  const int32_t right = frame_.depth + frame_.inner.width;
  const int32_t bottom = frame_.depth + frame_.inner.height;
  FillGray({right - kBarThickness, bottom - kBarThickness, right, bottom});
}

void GridPainter::FillGray(const RECT& rect) {
  FillRect(dc_, &rect, static_cast<HBRUSH>(GetStockObject(LTGRAY_BRUSH)));
}

RECT GridPainter::CellRect(int32_t row, int32_t col) const noexcept {
  return RectOf(columns_.Place(col, frame_.usable.width), rows_.Place(row, frame_.usable.height));
}

bool GridPainter::CurrentIsShown() const noexcept {
  return model_.Row >= model_.TopRow && model_.Col >= model_.LeftCol;
}

void GridPainter::DrawFocusOfCurrent() {
  if (CurrentIsShown()) DrawFocus(dc_, CellRect(model_.Row, model_.Col));
}

void GridPainter::ToggleFocus() {
  const InCells inside(dc_, frame_);
  DrawFocusOfCurrent();
}

void GridPainter::RepaintCurrentCell() {
  const InCells inside(dc_, frame_);
  const bool fixedRow = rows_.IsFixed(model_.Row);
  const bool fixedCol = columns_.IsFixed(model_.Col);
  if (!fixedRow && !fixedCol && !CurrentIsShown()) return;
  const RECT rect = CellRect(model_.Row, model_.Col);
  if (fixedRow && fixedCol) FillGray(rect);
  if (!fixedRow && !fixedCol) {
    const Brush brush(CreateSolidBrush(ColorOf(look_.backColor)));
    FillRect(dc_, &rect, brush.get());
    DrawFocus(dc_, rect);
  }
  const char* text = model_.CellText(model_.Row, model_.Col);
  if (text == nullptr) return;
  const TextLook look(dc_, look_.font, look_.foreColor);
  DrawText(text, rect, AlignmentOf(model_.Col));
}

}  // namespace qrn
