#include "ole/PictureImage.h"

#include <olectl.h>

namespace qrn::ole {

PictureImage ImageOf(const Com<IPictureDisp>& picture) noexcept {
  const auto image = Query<IPicture>(picture);
  SHORT type = PICTYPE_UNINITIALIZED;
  OLE_HANDLE handle = 0;
  if (!image || FAILED(image->get_Type(&type)) || FAILED(image->get_Handle(&handle))) return {};
  const auto wide = static_cast<LPARAM>(static_cast<LONG>(handle));
  if (type == PICTYPE_BITMAP) return {wide, IMAGE_BITMAP, BS_BITMAP};
  if (type == PICTYPE_ICON) return {wide, IMAGE_ICON, BS_ICON};
  return {};
}

}  // namespace qrn::ole
