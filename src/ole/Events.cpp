#include "ole/Events.h"

#include <olectl.h>

#include <algorithm>

#include "com/Enumerator.h"
#include "com/Module.h"
#include "ole/Control.h"
#include "ole/Kit.h"
#include "ole/SystemGuid.h"
#include "ole/tables/MemberChecks.h"

namespace qrn::ole {
namespace {

using KeptPoint = Com<IConnectionPoint>;

HRESULT GivePoint(const KeptPoint& point, IConnectionPoint** out) { return point.copyTo(out); }
using PointEnumerator = Enumerator<IEnumConnectionPoints, IConnectionPoint*, KeptPoint, &GivePoint>;

}  // namespace

Events::Events(Control& control, const ControlTable& table) noexcept
    : Face(control),
      events_(control, AsGuid(table.eventsId)),
      properties_(control, __uuidof(IPropertyNotifySink)) {}

// Keys and mouse are watched for every control alike: what its table does not have, nobody hears.
void Events::FireValues(int32_t id, VARIANT* values, size_t count) {
  if (frozen() || events_.empty() || !FindRow(control().table().events, id)) return;
  std::reverse(values, values + count);
  events_.ForEach<IDispatch>([&](IDispatch* sink) {
    DISPPARAMS sent{values, nullptr, static_cast<UINT>(count), 0};
    Variant ignored;
    sink->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &sent, ignored.put(), nullptr,
                 nullptr);
    return S_OK;
  });
}

HRESULT Events::AskLeave(DISPID id) {
  return properties_.ForEach<IPropertyNotifySink>([id](IPropertyNotifySink* sink) {
    return sink->OnRequestEdit(id) == S_FALSE ? S_FALSE : S_OK;
  });
}

void Events::NotifyChanged(DISPID id) {
  properties_.ForEach<IPropertyNotifySink>([id](IPropertyNotifySink* sink) {
    sink->OnChanged(id);
    return S_OK;
  });
}

void Events::Freeze(bool freeze) noexcept {
  frozen_ = freeze ? frozen_ + 1 : std::max(frozen_ - 1, 0);
}

void Events::Disconnect() noexcept {
  events_.Disconnect();
  properties_.Disconnect();
}

STDMETHODIMP Events::EnumConnectionPoints(IEnumConnectionPoints** points) {
  if (!points) return E_POINTER;
  return Run([&] {
    const std::vector both{KeptPoint(&events_), KeptPoint(&properties_)};
    return Make<PointEnumerator>(both).detachTo(points);
  });
}

STDMETHODIMP Events::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
  if (!point) return E_POINTER;
  *point = nullptr;
  for (ConnectionPoint* each : {&events_, &properties_}) {
    if (id == each->outgoing()) *point = each;
  }
  if (!*point) return CONNECT_E_NOCONNECTION;
  (*point)->AddRef();
  return S_OK;
}

}  // namespace qrn::ole
