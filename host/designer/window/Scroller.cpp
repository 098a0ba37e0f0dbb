#include "host/designer/window/Scroller.h"

#include <algorithm>
#include <iterator>

namespace qrn::designer {
namespace {

constexpr int kScrolledLine = 24;  // pixels

struct StepRow {
  WORD request;
  int lines;
  int pages;
};
constexpr StepRow kSteps[] = {
    {SB_LINEUP, -1, 0}, {SB_LINEDOWN, 1, 0}, {SB_PAGEUP, 0, -1}, {SB_PAGEDOWN, 0, 1}};

int Nearer(int position, int page, int from, int to) noexcept {
  if (to > position + page) position = to - page;
  return std::min(position, from);
}

}  // namespace

SCROLLINFO Scroller::Info(int bar) const noexcept {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_ALL;
  GetScrollInfo(window_, bar, &info);
  return info;
}

void Scroller::Fit(SIZE content) noexcept {
  // One bar's coming may take the room that makes the other one come.
  for (int pass = 0; pass < 2; ++pass) {
    RECT room{};
    GetClientRect(window_, &room);
    SCROLLINFO info{sizeof(SCROLLINFO),
                    SIF_RANGE | SIF_PAGE,
                    0,
                    content.cx - 1,
                    static_cast<UINT>(room.right),
                    0,
                    0};
    SetScrollInfo(window_, SB_HORZ, &info, TRUE);
    info.nMax = content.cy - 1;
    info.nPage = static_cast<UINT>(room.bottom);
    SetScrollInfo(window_, SB_VERT, &info, TRUE);
  }
}

bool Scroller::ScrollTo(int bar, int position) noexcept {
  const int before = Position(bar);
  SetScrollPos(window_, bar, position, TRUE);
  return Position(bar) != before;
}

bool Scroller::OnBar(int bar, WPARAM wParam) noexcept {
  const SCROLLINFO info = Info(bar);
  const WORD request = LOWORD(wParam);
  if (request == SB_THUMBTRACK || request == SB_THUMBPOSITION) {
    return ScrollTo(bar, info.nTrackPos);
  }
  for (const StepRow& row : kSteps) {
    if (row.request != request) continue;
    return ScrollTo(
        bar, info.nPos + row.lines * kScrolledLine + row.pages * static_cast<int>(info.nPage));
  }
  return false;
}

bool Scroller::OnWheel(int turn, bool across) noexcept {
  const int bar = across ? SB_HORZ : SB_VERT;
  const int notches = across ? turn : -turn;
  return ScrollTo(bar, Info(bar).nPos + notches * 3 * kScrolledLine / WHEEL_DELTA);
}

bool Scroller::Reveal(const RECT& part) noexcept {
  const SCROLLINFO across = Info(SB_HORZ);
  const SCROLLINFO down = Info(SB_VERT);
  const bool moved =
      ScrollTo(SB_HORZ, Nearer(across.nPos, static_cast<int>(across.nPage), part.left, part.right));
  return ScrollTo(SB_VERT,
                  Nearer(down.nPos, static_cast<int>(down.nPage), part.top, part.bottom)) ||
         moved;
}

}  // namespace qrn::designer
