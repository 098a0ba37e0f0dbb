#include "ole/ControlFace.h"

#include "ole/Control.h"

namespace qrn::ole {

STDMETHODIMP ControlFace::GetControlInfo(CONTROLINFO* info) {
  if (!info) return E_POINTER;
  return Run([&] {
    *info = CONTROLINFO{};
    info->cb = sizeof *info;
    control().OnFillControlInfo(*info);
    return S_OK;
  });
}

STDMETHODIMP ControlFace::OnMnemonic(MSG* message) {
  if (!message) return E_POINTER;
  return Run([&] {
    control().OnMnemonic(*message);
    return S_OK;
  });
}

STDMETHODIMP ControlFace::OnAmbientPropertyChange(DISPID id) {
  return Run([&] {
    control().OnAmbientChanged(id);
    return S_OK;
  });
}

STDMETHODIMP ControlFace::FreezeEvents(BOOL freeze) {
  control().events().Freeze(freeze != FALSE);
  return S_OK;
}

}  // namespace qrn::ole
