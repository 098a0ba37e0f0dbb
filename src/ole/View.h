// IViewObjectEx: drawing into any device, and telling one sink that the view has changed.
#pragma once

#include <ocidl.h>

#include "ole/Face.h"

namespace qrn::ole {

class View final : public Face<IViewObjectEx> {
 public:
  using Face::Face;

  // Tells the sink that the content looks different.
  void Tell();
  // Lets the sink go.
  void Forget() noexcept { sink_.reset(); }

  STDMETHODIMP Draw(DWORD aspect, LONG index, void* info, DVTARGETDEVICE* device, HDC target,
                    HDC dc, LPCRECTL bounds, LPCRECTL windowBounds,
                    BOOL(STDMETHODCALLTYPE* goOn)(ULONG_PTR), ULONG_PTR argument) override;
  STDMETHODIMP GetColorSet(DWORD aspect, LONG index, void* info, DVTARGETDEVICE* device, HDC target,
                           LOGPALETTE** palette) override;
  STDMETHODIMP Freeze(DWORD aspect, LONG index, void* info, DWORD* freeze) override;
  STDMETHODIMP Unfreeze(DWORD freeze) override;
  STDMETHODIMP SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override;
  STDMETHODIMP GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override;
  STDMETHODIMP GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, LPSIZEL size) override;
  STDMETHODIMP GetRect(DWORD aspect, LPRECTL rect) override;
  STDMETHODIMP GetViewStatus(DWORD* status) override;
  STDMETHODIMP QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point, LONG closeness,
                             DWORD* hit) override;
  STDMETHODIMP QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT rect, LONG closeness,
                            DWORD* hit) override;
  STDMETHODIMP GetNaturalExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, HDC target,
                                DVEXTENTINFO* info, LPSIZEL size) override;

 private:
  Com<IAdviseSink> sink_;
  DWORD flags_ = 0;
};

// How the view answers IViewObjectEx::GetViewStatus: it covers its rectangle.
inline constexpr DWORD kViewStatus = VIEWSTATUS_OPAQUE | VIEWSTATUS_SOLIDBKGND;

}  // namespace qrn::ole
