// Pictures from files, as objects that own what the system made of them.
#pragma once

#include <ocidl.h>

#include <optional>
#include <string>

#include "com/Com.h"

namespace qrn {

// The picture of a file that exists: `name` is as the field has it, `path` where it is (code page
// 932), `client` the control's size in pixels. Failures are shown (VE001, VE015, VE019, VE020,
// VE023).
//
// Nothing when the control is to keep what it has. No picture, an empty one, when it is to show
// none: an ending of no known kind, and, kept so, a bitmap that could not be read.
std::optional<com::Com<IPictureDisp>> LoadPictureFile(const std::string& name,
                                                      const std::string& path, SIZE client);

}  // namespace qrn
