// One outgoing interface of a control and the sinks connected to it.
#pragma once

#include <ocidl.h>

#include <vector>

#include "ole/Kit.h"

namespace qrn::ole {

class Control;

struct ConnectedSink {
  DWORD cookie;
  Com<IUnknown> sink;  // points at the outgoing interface
};

// Sinks may come and leave at any time, also while they are being called. An object of its own, but
// it lives in the control: a reference to it is one to the control.
class ConnectionPoint final : public IConnectionPoint {
 public:
  ConnectionPoint(Control& control, const GUID& outgoing) noexcept
      : control_(control), outgoing_(outgoing) {}
  ConnectionPoint(const ConnectionPoint&) = delete;
  ConnectionPoint& operator=(const ConnectionPoint&) = delete;
  virtual ~ConnectionPoint() = default;

  const GUID& outgoing() const noexcept { return outgoing_; }
  bool empty() const noexcept { return sinks_.empty(); }

  // Calls `body`(sink) for each sink that is connected when its turn comes; a sink that joins
  // meanwhile waits for the next time. Stops when the body gives something else than S_OK, and
  // gives that. `Sink` is the interface the point was made for.
  template <class Sink, class Body>
  HRESULT ForEach(Body body) {
    const std::vector<ConnectedSink> now = sinks_;
    for (const ConnectedSink& entry : now) {
      if (!IsConnected(entry.cookie)) continue;
      const HRESULT result = body(static_cast<Sink*>(entry.sink.get()));
      if (result != S_OK) return result;
    }
    return S_OK;
  }

  // Lets all sinks go.
  void Disconnect() noexcept;

  STDMETHODIMP QueryInterface(REFIID id, void** out) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;
  STDMETHODIMP GetConnectionInterface(IID* id) override;
  STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override;
  STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override;
  STDMETHODIMP Unadvise(DWORD cookie) override;
  STDMETHODIMP EnumConnections(IEnumConnections** connections) override;

 private:
  bool IsConnected(DWORD cookie) const noexcept;

  Control& control_;
  const GUID& outgoing_;
  std::vector<ConnectedSink> sinks_;
  DWORD lastCookie_ = 0;
};

}  // namespace qrn::ole
