// What forms that are made and messages about forms speak.
#pragma once

#include "platform/TextTable.h"

namespace qrn::form {

using qrn::Language;

}  // namespace qrn::form
