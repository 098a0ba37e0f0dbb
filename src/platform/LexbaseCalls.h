// The dictionary library (lexbase.h), found at run time like the record manager
// (platform/BtrCall.h): an installed one first, the one delivered beside this code otherwise.
// Without the library every call gives LexbaseMissing.
#pragma once

#include <cstdint>

#include "lexbase.h"

namespace qrn {

// Its functions by their names.
struct LexbaseFunctions {
#define QRN_POINTER(result, name, arguments) decltype(&::name) name;
  LEXBASE_FUNCTIONS(QRN_POINTER)
#undef QRN_POINTER
};

int32_t DDFOpen(const char* directory, int32_t mode) noexcept;
int32_t DDFClose() noexcept;
int32_t DDFReadFile(void* row) noexcept;
int32_t DDFReadField(void* row) noexcept;
int32_t DDFReadIndex(void* row) noexcept;

// Puts other functions in the library's place (all five set, alive as long as they stand there);
// null brings the library back. Returns what stood there, null for the library.
const LexbaseFunctions* ReplaceLexbase(const LexbaseFunctions* functions) noexcept;

}  // namespace qrn
