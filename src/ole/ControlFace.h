// IOleControl: mnemonics, ambient changes, freezing of events.
#pragma once

#include <ocidl.h>

#include "ole/Face.h"

namespace qrn::ole {

class ControlFace final : public Face<IOleControl> {
 public:
  using Face::Face;

  STDMETHODIMP GetControlInfo(CONTROLINFO* info) override;
  STDMETHODIMP OnMnemonic(MSG* message) override;
  STDMETHODIMP OnAmbientPropertyChange(DISPID id) override;
  STDMETHODIMP FreezeEvents(BOOL freeze) override;
};

}  // namespace qrn::ole
