// Drawing a grid: frame, fixed rows and columns, cells, selection, focus. Straight to the device,
// and nothing but what shows is looked at: sixty thousand rows cost what sixty do.
//
// All of it is drawn in the control's own pixels; a device whose origin lies elsewhere is moved by
// the caller.
#pragma once

#include "com/Handles.h"
#include "grid/layout/GridFrame.h"

namespace qrn {

// What the drawing takes from the control beside its model.
struct GridLook {
  GridSize window;
  GridBars bars;
  int32_t appearance;
  int32_t borderStyle;
  uint32_t backColor;  // OLE colours
  uint32_t foreColor;
  HFONT font;
  bool runs;      // at run time: selection, corner
  bool hasFocus;  // the focus rectangle is drawn

  int32_t Depth() const noexcept { return FrameDepth(appearance, borderStyle); }
  GridFrame Frame() const noexcept { return FrameOf(window, Depth(), bars); }
};

// The cells from a first one up to an end that is not one of them.
struct GridRange {
  int32_t firstRow;
  int32_t firstCol;
  int32_t endRow;
  int32_t endCol;
};

class GridPainter {
 public:
  GridPainter(HDC dc, const GridModel& model, const GridLook& look);

  // The whole control.
  void Paint();
  // The current cell alone, over what stands there. Kept so: in a fixed row or column its old text
  // is not taken away, and it has its column's alignment there.
  void RepaintCurrentCell();
  // The range as selected, over the cells that are there.
  void PaintSelected(const GridRange& range);
  // Draws the focus rectangle of the current cell, or takes it away.
  void ToggleFocus();

 private:
  void DrawFrame();
  void DrawGrid();
  void DrawBandEdges();
  void DrawBandLines();
  void DrawBevels();
  void DrawBevel(TrackSpan column, TrackSpan row);
  void DrawBandTexts();
  void DrawRange(const GridRange& range, COLORREF color);
  void DrawRangeLines(const std::vector<PlacedTrack>& columns, const std::vector<PlacedTrack>& rows,
                      const RECT& area);
  void DrawSelection();
  void DrawCorner();
  void DrawFocusOfCurrent();
  void DrawTexts(const std::vector<PlacedTrack>& columns, const std::vector<PlacedTrack>& rows,
                 int32_t inset, bool aligned);
  void DrawText(const char* text, RECT rect, UINT alignment);
  void Line(int32_t fromX, int32_t fromY, int32_t toX, int32_t toY);
  void FillGray(const RECT& rect);

  RECT CellRect(int32_t row, int32_t col) const noexcept;
  bool CurrentIsShown() const noexcept;
  UINT AlignmentOf(int32_t col) const noexcept;

  HDC dc_;
  const GridModel& model_;
  const GridLook& look_;
  const GridFrame frame_;
  const GridAxis columns_;
  const GridAxis rows_;
  // How far the cells reach in the usable area.
  const GridSize drawn_;
};

}  // namespace qrn
