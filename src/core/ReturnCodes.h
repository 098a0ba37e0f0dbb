// The system's own codes. The flat interface returns them, the database control's methods give them
// through their last argument; Btrieve's own statuses are positive and pass through unchanged.
#pragma once

#include "core/DbTypes.h"
#include "qrnbt350.h"

namespace qrn {

// kFailure, kNotOpen and so on.
enum ReturnCode : Status {
#define QRN_RETURN_CODE(name, number) k##name = (number),
  QRN_CODES(QRN_RETURN_CODE)
#undef QRN_RETURN_CODE
};

}  // namespace qrn
