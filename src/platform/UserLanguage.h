// The language in which the user reads.
#pragma once

#include "platform/TextTable.h"

namespace qrn {

// Japanese where the user's own is, else English: on Windows the language of the user's interface,
// elsewhere the first of LC_ALL, LC_MESSAGES and LANG that is set.
Language UserLanguage() noexcept;

}  // namespace qrn
