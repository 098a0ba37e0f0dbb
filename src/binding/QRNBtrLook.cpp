// What the database control shows: a piece of the form at run time, its picture at design time, and
// the About box.
#include <olectl.h>

#include "binding/QRNBtr.h"
#include "com/Handles.h"

namespace qrn {
namespace {

constexpr int kWithDictionary = 222;  // bitmaps
constexpr int kWithoutDictionary = 115;
constexpr int kAboutDialog = 132;
constexpr int kSizePx = 32;

COLORREF FormColor(const ole::ClientSite& site) noexcept {
  com::Variant value;
  com::Variant number;
  COLORREF color = GetSysColor(COLOR_BTNFACE);
  if (SUCCEEDED(site.Ambient(DISPID_AMBIENT_BACKCOLOR, value)) &&
      SUCCEEDED(value.as(VT_I4, number))) {
    OleTranslateColor(static_cast<OLE_COLOR>(number->lVal), nullptr, &color);
  }
  return color;
}

void DrawPicture(HDC dc, const RECT& rect, int id) {
  const com::Bitmap picture(LoadBitmapW(com::ModuleInstance(), MAKEINTRESOURCEW(id)));
  const com::MemoryDc memory(CreateCompatibleDC(dc));
  const com::Selected selected(memory.get(), picture.get());
  BitBlt(dc, rect.left, rect.top, kSizePx, kSizePx, memory.get(), 0, 0, SRCCOPY);
}

INT_PTR CALLBACK AboutProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
  if (message == WM_INITDIALOG) return TRUE;
  if (message != WM_COMMAND) return FALSE;
  const WORD button = LOWORD(wParam);
  if (button == IDOK || button == IDCANCEL) EndDialog(dialog, button);
  return TRUE;
}

}  // namespace

void CQRNBtr::OnDraw(HDC dc, const RECT& rect) {
  if (UserMode()) {
    const com::Brush brush(CreateSolidBrush(FormColor(site())));
    FillRect(dc, &rect, brush.get());
  } else {
    DrawPicture(dc, rect, GetDictionary() != nullptr ? kWithDictionary : kWithoutDictionary);
  }
}

// The container may give any room; the control takes its own size of it.
void CQRNBtr::AdjustRect(RECT& place) {
  place.right = place.left + kSizePx;
  place.bottom = place.top + kSizePx;
}

void CQRNBtr::About() {
  DialogBoxParamW(com::ModuleInstance(), MAKEINTRESOURCEW(kAboutDialog), GetActiveWindow(),
                  &AboutProcedure, 0);
}

}  // namespace qrn
