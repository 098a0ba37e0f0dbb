#include "host/designer/panes/CodeMargin.h"

#include <algorithm>
#include <utility>

#include "com/Handles.h"

namespace qrn::designer {
namespace {

constexpr size_t kLeastDigits = 3;
constexpr int kNumberSpare = 6;
constexpr COLORREF kMarkColour = RGB(192, 0, 0);

int DigitWidth(HFONT font) noexcept {
  const com::WindowDc screen(nullptr);
  const com::Selected selected(screen.get(), font);
  SIZE size{};
  GetTextExtentPoint32W(screen.get(), L"0", 1, &size);
  return size.cx;
}

}  // namespace

void CodeMargin::MakeIn(HWND parent, HFONT font) {
  font_ = font;
  Make(parent, WS_VISIBLE);
}

int CodeMargin::Width() const noexcept {
  const size_t digits = std::max(std::to_string(view_.count).size(), kLeastDigits);
  return static_cast<int>(digits) * DigitWidth(font_) + 2 * Scaled(kNumberSpare);
}

void CodeMargin::Show(const View& view) noexcept {
  if (view == view_) return;
  view_ = view;
  InvalidateRect(window(), nullptr, TRUE);
}

void CodeMargin::Mark(std::set<int> lines) noexcept {
  if (lines == marked_) return;
  marked_ = std::move(lines);
  InvalidateRect(window(), nullptr, TRUE);
}

void CodeMargin::PaintLine(HDC dc, int line, RECT place) const {
  const bool isMarked = marked_.contains(line);
  if (isMarked) {
    const com::Brush brush(CreateSolidBrush(kMarkColour));
    FillRect(dc, &place, brush.get());
  }
  SetTextColor(dc, isMarked ? RGB(255, 255, 255) : GetSysColor(COLOR_BTNSHADOW));
  place.right -= Scaled(kNumberSpare);
  const std::wstring number = std::to_wstring(line + 1);
  DrawTextW(dc, number.c_str(), -1, &place, DT_RIGHT | DT_SINGLELINE | DT_NOPREFIX | DT_TOP);
}

void CodeMargin::Paint() const {
  const com::Paint paint(window());
  const com::Selected selected(paint.dc(), font_);
  SetBkMode(paint.dc(), TRANSPARENT);
  const SIZE size = ClientSize();
  const int height = std::max(LineHeight(font_), 1);
  RECT place{0, view_.top, size.cx, view_.top + height};
  for (int line = view_.first; line < view_.count && place.top < size.cy; ++line) {
    PaintLine(paint.dc(), line, place);
    OffsetRect(&place, 0, height);
  }
}

bool CodeMargin::OnMessage(com::Message& message) {
  if (message.id != WM_PAINT) return false;
  Paint();
  return true;
}

}  // namespace qrn::designer
