// What a control tells its container: its own events, and the changes of its properties.
#pragma once

#include <array>

#include "com/EventArgument.h"
#include "ole/ConnectionPoint.h"
#include "ole/Face.h"
#include "ole/tables/Members.h"

namespace qrn::ole {

class Events final : public Face<IConnectionPointContainer> {
 public:
  Events(Control& control, const ControlTable& table) noexcept;

  // Raises an event by its number, unchecked; code of controls uses Fire (Names.h).
  template <class... A>
  void Raise(int32_t id, A... arguments) {
    std::array<VARIANT, sizeof...(A)> values{EventArgument(arguments)...};
    FireValues(id, values.data(), sizeof...(A));
  }

  // Asks every property sink for leave to change; S_FALSE when one refuses.
  HRESULT AskLeave(DISPID id);
  void NotifyChanged(DISPID id);

  // Counts, as the container asks.
  void Freeze(bool freeze) noexcept;
  bool frozen() const noexcept { return frozen_ > 0; }

  ConnectionPoint& eventPoint() noexcept { return events_; }
  ConnectionPoint& propertyPoint() noexcept { return properties_; }
  void Disconnect() noexcept;

  STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) override;
  STDMETHODIMP FindConnectionPoint(REFIID id, IConnectionPoint** point) override;

 private:
  // Turns the values round into the order of DISPPARAMS.
  void FireValues(int32_t id, VARIANT* values, size_t count);

  ConnectionPoint events_;
  ConnectionPoint properties_;
  int frozen_ = 0;
};

}  // namespace qrn::ole
