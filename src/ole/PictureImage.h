// A picture as "Button" and "Static" windows take one.
#pragma once

#include <ocidl.h>

#include "ole/Kit.h"

namespace qrn::ole {

// The handle is the picture's, and good as long as that.
struct PictureImage {
  LPARAM handle = 0;
  WPARAM kind = 0;        // IMAGE_BITMAP or IMAGE_ICON, as BM_SETIMAGE and STM_SETIMAGE take it
  DWORD buttonStyle = 0;  // BS_BITMAP or BS_ICON; 0 for a picture that no such window shows
};

// Of a bitmap or an icon; nothing of any other picture, and of none.
PictureImage ImageOf(const Com<IPictureDisp>& picture) noexcept;

}  // namespace qrn::ole
