// How a form looks and behaves, as its file says.
#pragma once

#include <string>

#include "host/container/CompanionFiles.h"
#include "host/container/Fonts.h"
#include "host/container/Units.h"

namespace qrn::host {

enum class FormBorder { None, Fixed, Sizable, Dialog, ToolWindow, SizableTool };
enum class StartPosition { Manual, CentreOwner, CentreScreen, SystemDefault };

struct FormLook {
  std::wstring caption;
  std::wstring tag;
  Bounds client{0, 0, 4680, 3195};  // in twips
  FormBorder border = FormBorder::Sizable;
  StartPosition start = StartPosition::SystemDefault;
  OLE_COLOR backColor = 0x8000000F;
  OLE_COLOR foreColor = 0x80000012;
  Com<IFontDisp> font;
  Com<IPictureDisp> icon;
  bool controlBox = true;
  bool maxButton = true;
  bool minButton = true;
  bool showInTaskbar = true;
  bool enabled = true;
  bool keyPreview = false;
  int windowState = 0;
  int mousePointer = 0;
  bool pixelScale = false;  // places of what lies on the form are pixels instead of twips

  double UnitsPerPixel() const noexcept { return pixelScale ? 1 : kTwipsPerPixel; }
};

// Reads the form's own properties; those that mean nothing at run time are passed over, unknown
// ones and values that do not fit are mistakes.
FormLook ReadFormLook(const form::ControlNode& node, CompanionFiles& files,
                      form::Mistakes& mistakes);

}  // namespace qrn::host
