// The dictionary library `lexbase`, found at run time like the record manager (platform/BtrCall.h):
// an installed one first, the one delivered beside this code otherwise.
//
// DDFOpen opens file.ddf, field.ddf and index.ddf of a directory; each read gives the next row of
// its file; DDFClose ends the reading. There is one reading at a time. Codes: 0 success, 9 the end
// of a file, anything else a failure. Without the library every call gives kLexbaseMissing.
#pragma once

#include <cstdint>

namespace qrn {

inline constexpr int32_t kLexbaseEndOfFile = 9;
inline constexpr int32_t kLexbaseMissing = 126;  // the system's "module could not be found"

// Bytes that a caller reserves for one row.
inline constexpr int kFileRowSize = 112;
inline constexpr int kFieldRowSize = 32;
inline constexpr int kIndexRowSize = 16;

struct LexbaseFunctions {
  int32_t (*Open)(const char* directory, int32_t mode);
  int32_t (*Close)();
  int32_t (*ReadFile)(void* row);
  int32_t (*ReadField)(void* row);
  int32_t (*ReadIndex)(void* row);
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
