// The pictures of the toolbox, 16 by 15 pixels. The colour of the pixel in the top left corner is
// to be seen through.
#pragma once

#include <oaidl.h>

#include <string>

#include "com/Handles.h"
#include "host/container/ControlClasses.h"

namespace qrn::designer {

inline constexpr SIZE kToolPicture{16, 15};

// As the class's registration names it or, of a module that is not registered, the script that the
// module has for that. Empty if neither does.
com::Bitmap ModulePicture(host::ControlClasses& classes, const std::string& library,
                          const std::string& className);

// Of a piece of the furniture, and of the pointer for an empty name.
com::Bitmap FurniturePicture(const std::string& className);

}  // namespace qrn::designer
