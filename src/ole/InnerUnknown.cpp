#include "ole/InnerUnknown.h"

#include "ole/Control.h"

namespace qrn::ole {

STDMETHODIMP InnerUnknown::QueryInterface(REFIID id, void** out) {
  return control_.FindInterface(id, out);
}

STDMETHODIMP_(ULONG) InnerUnknown::Release() {
  if (--references_ > 0) return references_;
  // While the control retires it is called back and counts up and down again; it must not be
  // deleted twice.
  references_ = ULONG_MAX / 2;
  control_.Retire();
  delete &control_;
  return 0;
}

}  // namespace qrn::ole
