// A face is one interface (or a few that belong together) of a control, as an object inside it. Its
// IUnknown is the control's: queries and references go to the control, or to what aggregates it.
#pragma once

#include "ole/Kit.h"

namespace qrn::ole {

class Control;

// The controlling unknown of a control: the control's own, or its aggregator's.
IUnknown& OuterOf(Control& control) noexcept;

template <class... Interfaces>
class Face : public Interfaces... {
 public:
  explicit Face(Control& control) noexcept : control_(control) {}
  Face(const Face&) = delete;
  Face& operator=(const Face&) = delete;

  STDMETHODIMP QueryInterface(REFIID id, void** out) override {
    return OuterOf(control_).QueryInterface(id, out);
  }
  STDMETHODIMP_(ULONG) AddRef() override { return OuterOf(control_).AddRef(); }
  STDMETHODIMP_(ULONG) Release() override { return OuterOf(control_).Release(); }

 protected:
  virtual ~Face() = default;

  Control& control() const noexcept { return control_; }

  // Runs a method's body as Guard does, and keeps the control alive until it is over: a handler
  // that the body calls may drop the last reference.
  template <class Body>
  HRESULT Run(Body&& body) noexcept {
    const Com<IUnknown> alive(&OuterOf(control_));
    return Guard(std::forward<Body>(body));
  }

 private:
  Control& control_;
};

}  // namespace qrn::ole
