// Where a control's events arrive.
#pragma once

#include <ocidl.h>

#include <vector>

#include "host/container/ControlOwner.h"

namespace qrn::host {

// Answers to the event interface's id as a control asks for it. After Detach events go nowhere.
class EventSink final : public ComObject<IDispatch> {
 public:
  EventSink(ControlOwner& owner, GUID events, std::vector<EventInfo> list)
      : owner_(&owner), events_(events), list_(std::move(list)) {}

  void Detach() noexcept { owner_ = nullptr; }

  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return DISP_E_UNKNOWNNAME;
  }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*, EXCEPINFO*,
                      UINT*) override;

 protected:
  void* Find(REFIID id) noexcept override;

 private:
  ControlOwner* owner_;
  GUID events_;
  std::vector<EventInfo> list_;
};

}  // namespace qrn::host
