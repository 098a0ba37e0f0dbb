#include "host/container/EventSink.h"

namespace qrn::host {

void* EventSink::Find(REFIID id) noexcept {
  if (id == events_ && events_ != GUID_NULL) return static_cast<IDispatch*>(this);
  return Object::Find(id);
}

STDMETHODIMP EventSink::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

STDMETHODIMP EventSink::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                               EXCEPINFO*, UINT*) {
  const Com<IDispatch> alive(this);
  DISPPARAMS none{};
  return Guard([&]() -> HRESULT {
    for (const EventInfo& event : list_) {
      if (event.id != id || !owner_) continue;
      const EventInfo raised = event;
      owner_->OnEvent(raised, parameters ? *parameters : none);
      return S_OK;
    }
    return DISP_E_MEMBERNOTFOUND;
  });
}

}  // namespace qrn::host
