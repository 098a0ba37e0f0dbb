#include "host/runner/Painting.h"

namespace qrn::host {

COLORREF ColourOf(OLE_COLOR colour) noexcept {
  COLORREF plain = 0;
  return SUCCEEDED(OleTranslateColor(colour, nullptr, &plain)) ? plain : 0;
}

void FillWith(HDC dc, const RECT& area, OLE_COLOR colour) noexcept {
  const com::Brush brush(CreateSolidBrush(ColourOf(colour)));
  FillRect(dc, &area, brush.get());
}

BufferedPaint::BufferedPaint(HWND window) : paint_(window) {
  GetClientRect(window, &area_);
  buffer_.reset(CreateCompatibleDC(paint_.dc()));
  bitmap_.reset(CreateCompatibleBitmap(paint_.dc(), area_.right > 0 ? area_.right : 1,
                                       area_.bottom > 0 ? area_.bottom : 1));
  before_ = SelectObject(buffer_.get(), bitmap_.get());
}

BufferedPaint::~BufferedPaint() {
  BitBlt(paint_.dc(), 0, 0, area_.right, area_.bottom, buffer_.get(), 0, 0, SRCCOPY);
  SelectObject(buffer_.get(), before_);
}

}  // namespace qrn::host
