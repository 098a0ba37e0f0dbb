#include "ole/ConnectionPoint.h"

#include <olectl.h>

#include <algorithm>

#include "com/Enumerator.h"
#include "ole/Face.h"

namespace qrn::ole {
namespace {

HRESULT GiveConnection(const ConnectedSink& connected, CONNECTDATA* out) {
  out->dwCookie = connected.cookie;
  return connected.sink.copyTo(&out->pUnk);
}
using ConnectionEnumerator =
    Enumerator<IEnumConnections, CONNECTDATA, ConnectedSink, &GiveConnection>;

// The sink as the outgoing interface, or as a plain IDispatch, which serves an event interface.
Com<IUnknown> AsOutgoing(IUnknown* sink, const GUID& outgoing) {
  Com<IUnknown> found;
  if (SUCCEEDED(sink->QueryInterface(outgoing, found.putVoid()))) return found;
  if (outgoing != __uuidof(IPropertyNotifySink)) {
    sink->QueryInterface(__uuidof(IDispatch), found.putVoid());
  }
  return found;
}

}  // namespace

bool ConnectionPoint::IsConnected(DWORD cookie) const noexcept {
  return std::ranges::find(sinks_, cookie, &ConnectedSink::cookie) != sinks_.end();
}

void ConnectionPoint::Disconnect() noexcept {
  const std::vector<ConnectedSink> gone =
      std::move(sinks_);  // a sink's release may come back to us
  sinks_.clear();
}

STDMETHODIMP ConnectionPoint::QueryInterface(REFIID id, void** out) {
  if (!out) return E_POINTER;
  const bool known = id == __uuidof(IUnknown) || id == __uuidof(IConnectionPoint);
  *out = known ? static_cast<IConnectionPoint*>(this) : nullptr;
  if (known) AddRef();
  return known ? S_OK : E_NOINTERFACE;
}
STDMETHODIMP_(ULONG) ConnectionPoint::AddRef() { return OuterOf(control_).AddRef(); }
STDMETHODIMP_(ULONG) ConnectionPoint::Release() { return OuterOf(control_).Release(); }

STDMETHODIMP ConnectionPoint::GetConnectionInterface(IID* id) {
  if (!id) return E_POINTER;
  *id = outgoing_;
  return S_OK;
}

STDMETHODIMP ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
  if (!container) return E_POINTER;
  return OuterOf(control_).QueryInterface(__uuidof(IConnectionPointContainer),
                                          reinterpret_cast<void**>(container));
}

STDMETHODIMP ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) {
  if (!sink || !cookie) return E_POINTER;
  *cookie = 0;
  return Guard([&] {
    Com<IUnknown> entry = AsOutgoing(sink, outgoing_);
    if (!entry) return CONNECT_E_CANNOTCONNECT;
    sinks_.push_back({++lastCookie_, std::move(entry)});
    *cookie = lastCookie_;
    return S_OK;
  });
}

STDMETHODIMP ConnectionPoint::Unadvise(DWORD cookie) {
  const auto found = std::ranges::find(sinks_, cookie, &ConnectedSink::cookie);
  if (found == sinks_.end()) return CONNECT_E_NOCONNECTION;
  const ConnectedSink gone = std::move(*found);
  sinks_.erase(found);
  return S_OK;
}

STDMETHODIMP ConnectionPoint::EnumConnections(IEnumConnections** connections) {
  if (!connections) return E_POINTER;
  return Guard([&] { return Make<ConnectionEnumerator>(sinks_).detachTo(connections); });
}

}  // namespace qrn::ole
