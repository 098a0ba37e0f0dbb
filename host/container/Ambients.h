// The ambient properties of a container: what a control may ask of the form it stands on.
#pragma once

#include <ocidl.h>
#include <olectl.h>

#include <string>

#include "com/Variant.h"
#include "host/container/ComObject.h"

namespace qrn::host {

struct AmbientValues {
  std::wstring displayName;  // the control's name; "cmd(2)" for an element of an array
  bool userMode = true;      // false while the form is being designed
  OLE_COLOR backColor = 0x8000000F;
  OLE_COLOR foreColor = 0x80000012;
  Com<IFontDisp> font;
  LCID locale = 0x411;
  std::wstring scaleUnits = L"Twip";
  bool displayAsDefault = false;  // the control is the form's default button
};

// The value of an ambient property by its dispatch id (-701 and below); DISP_E_MEMBERNOTFOUND for
// one that this container does not have.
HRESULT AmbientValue(const AmbientValues& ambients, DISPID id, VARIANT* value) noexcept;

}  // namespace qrn::host
