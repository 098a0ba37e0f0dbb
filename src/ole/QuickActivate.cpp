#include "ole/QuickActivate.h"

#include <olectl.h>

#include "ole/Control.h"

namespace qrn::ole {
namespace {

DWORD Connect(ConnectionPoint& point, IUnknown* sink) {
  DWORD cookie = 0;
  if (sink) point.Advise(sink, &cookie);
  return cookie;
}

}  // namespace

STDMETHODIMP QuickActivation::QuickActivate(QACONTAINER* container, QACONTROL* state) {
  if (!container || !state) return E_POINTER;
  if (container->cbSize < sizeof *container || state->cbSize < sizeof *state) return E_INVALIDARG;
  return Run([&] {
    const ULONG size = state->cbSize;
    *state = QACONTROL{};
    state->cbSize = size;
    Check(control().oleObject().SetClientSite(container->pClientSite));
    if (container->pAdviseSink) {
      control().view().SetAdvise(DVASPECT_CONTENT, 0, container->pAdviseSink);
    }
    state->dwPropNotifyCookie =
        Connect(control().events().propertyPoint(), container->pPropertyNotifySink);
    state->dwEventCookie = Connect(control().events().eventPoint(), container->pUnkEventSink);
    state->dwViewStatus = kViewStatus;
    return control().oleObject().GetMiscStatus(DVASPECT_CONTENT, &state->dwMiscStatus);
  });
}

STDMETHODIMP QuickActivation::SetContentExtent(LPSIZEL size) {
  return control().oleObject().SetExtent(DVASPECT_CONTENT, size);
}
STDMETHODIMP QuickActivation::GetContentExtent(LPSIZEL size) {
  return control().oleObject().GetExtent(DVASPECT_CONTENT, size);
}

}  // namespace qrn::ole
