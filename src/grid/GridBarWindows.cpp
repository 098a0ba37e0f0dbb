#include "grid/GridBarWindows.h"

#include "com/Module.h"

namespace qrn {
namespace {

struct BarKind {
  UINT_PTR childId;
  DWORD style;
};
constexpr DWORD kCommonStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
constexpr BarKind kAcross{127, kCommonStyle | SBS_HORZ};
constexpr BarKind kDown{128, kCommonStyle | SBS_VERT};

void Destroy(HWND& bar) noexcept {
  if (bar) DestroyWindow(std::exchange(bar, nullptr));
}

void Put(HWND& bar, HWND grid, const BarKind& kind, const GridRect& rect) noexcept {
  const int width = rect.right - rect.left;
  const int height = rect.bottom - rect.top;
  if (bar) {
    MoveWindow(bar, rect.left, rect.top, width, height, TRUE);
    return;
  }
  bar =
      CreateWindowExW(0, L"scrollbar", nullptr, kind.style, rect.left, rect.top, width, height,
                      grid, reinterpret_cast<HMENU>(kind.childId), com::ModuleInstance(), nullptr);
}

}  // namespace

void GridBarWindows::LayOut(HWND grid, GridSize window, int32_t depth, GridBars bars) noexcept {
  if (bars.horizontal) {
    Put(horizontal_, grid, kAcross, PlaceHorizontalBar(window, depth, bars));
  } else {
    Destroy(horizontal_);
  }
  if (bars.vertical) {
    Put(vertical_, grid, kDown, PlaceVerticalBar(window, depth, bars));
  } else {
    Destroy(vertical_);
  }
}

void GridBarWindows::SetRanges(const GridModel& model, int32_t innerHeight) noexcept {
  const auto last = LastVerticalPosition(RowsOf(model), innerHeight);
  if (vertical_ && last) SetScrollRange(vertical_, SB_CTL, 1, *last, FALSE);
  if (horizontal_) SetScrollRange(horizontal_, SB_CTL, 1, model.Cols - model.FixedCols, FALSE);
}

void GridBarWindows::SetPosition(GridDirection direction, int32_t position) noexcept {
  if (const HWND bar = Of(direction)) SetScrollPos(bar, SB_CTL, position, TRUE);
}

BarRange GridBarWindows::Range(GridDirection direction) const noexcept {
  int least = 1;
  int most = 1;
  if (const HWND bar = Of(direction)) GetScrollRange(bar, SB_CTL, &least, &most);
  return {least, most};
}

int32_t GridBarWindows::Thumb(GridDirection direction, WORD told) const noexcept {
  if (Range(direction).most <= 0xFFFF) return told;
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_TRACKPOS;
  return GetScrollInfo(Of(direction), SB_CTL, &info) ? info.nTrackPos : told;
}

}  // namespace qrn
