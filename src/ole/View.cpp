#include "ole/View.h"

#include <olectl.h>

#include "com/Extent.h"
#include "ole/Control.h"

namespace qrn::ole {
namespace {

// Draws in pixels whatever the device's mapping, and leaves the device as it was. A metafile keeps
// its own coordinates: it has no pixels.
class PixelMode {
 public:
  PixelMode(HDC dc, RECT& bounds) noexcept : dc_(dc), saved_(SaveDC(dc)) {
    if (GetDeviceCaps(dc, TECHNOLOGY) == DT_METAFILE) return;
    LPtoDP(dc, reinterpret_cast<POINT*>(&bounds), 2);
    SetMapMode(dc, MM_TEXT);
    SetWindowOrgEx(dc, 0, 0, nullptr);
    SetViewportOrgEx(dc, 0, 0, nullptr);
  }
  PixelMode(const PixelMode&) = delete;
  PixelMode& operator=(const PixelMode&) = delete;
  ~PixelMode() { RestoreDC(dc_, saved_); }

 private:
  HDC dc_;
  int saved_;
};

}  // namespace

void View::Tell() {
  const Com<IAdviseSink> sink = sink_;
  if (!sink) return;
  sink->OnViewChange(DVASPECT_CONTENT, -1);
  if (flags_ & ADVF_ONLYONCE) sink_.reset();
}

STDMETHODIMP View::Draw(DWORD aspect, LONG, void*, DVTARGETDEVICE*, HDC, HDC dc, LPCRECTL bounds,
                        LPCRECTL, BOOL(STDMETHODCALLTYPE*)(ULONG_PTR), ULONG_PTR) {
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  if (!dc || !bounds) return E_INVALIDARG;
  return Run([&] {
    RECT rect{bounds->left, bounds->top, bounds->right, bounds->bottom};
    const PixelMode pixels(dc, rect);
    control().OnDraw(dc, rect);
    return S_OK;
  });
}

STDMETHODIMP View::GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE** palette) {
  if (palette) *palette = nullptr;
  return S_FALSE;
}
STDMETHODIMP View::Freeze(DWORD, LONG, void*, DWORD*) { return E_NOTIMPL; }
STDMETHODIMP View::Unfreeze(DWORD) { return E_NOTIMPL; }

STDMETHODIMP View::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
  if (sink && !(aspects & DVASPECT_CONTENT)) return DV_E_DVASPECT;
  return Run([&] {
    sink_ = Com<IAdviseSink>(sink);
    flags_ = flags;
    if (flags & ADVF_PRIMEFIRST) Tell();
    return S_OK;
  });
}

STDMETHODIMP View::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) {
  if (aspects) *aspects = sink_ ? DVASPECT_CONTENT : 0;
  if (flags) *flags = flags_;
  return sink ? sink_.copyTo(sink) : S_OK;
}

STDMETHODIMP View::GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, LPSIZEL size) {
  return control().oleObject().GetExtent(aspect, size);
}

STDMETHODIMP View::GetRect(DWORD aspect, LPRECTL rect) {
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  if (!rect) return E_POINTER;
  const SIZE size = control().oleObject().extent();
  *rect = {0, 0, size.cx, -size.cy};  // HIMETRIC counts upwards
  return S_OK;
}

STDMETHODIMP View::GetViewStatus(DWORD* status) {
  if (!status) return E_POINTER;
  *status = kViewStatus;
  return S_OK;
}

STDMETHODIMP View::QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point, LONG, DWORD* hit) {
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  if (!bounds || !hit) return E_POINTER;
  *hit = PtInRect(bounds, point) ? HITRESULT_HIT : HITRESULT_OUTSIDE;
  return S_OK;
}

STDMETHODIMP View::QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT rect, LONG, DWORD* hit) {
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  if (!bounds || !rect || !hit) return E_POINTER;
  RECT common{};
  *hit = IntersectRect(&common, bounds, rect) ? HITRESULT_HIT : HITRESULT_OUTSIDE;
  return S_OK;
}

STDMETHODIMP View::GetNaturalExtent(DWORD aspect, LONG, DVTARGETDEVICE*, HDC, DVEXTENTINFO* info,
                                    LPSIZEL size) {
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  if (!info || !size) return E_POINTER;
  if (!control().HasFixedSize() || info->dwExtentMode != DVEXTENT_CONTENT) return E_NOTIMPL;
  const SIZE fixed = control().oleObject().extent();
  *size = {fixed.cx, fixed.cy};
  return S_OK;
}

}  // namespace qrn::ole
