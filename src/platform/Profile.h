// Settings files in Windows' profile form: sections, `key=value` lines, comments after `;`.
//
// Both halves keep Windows' rules: sections and keys compare without case, the first section of a
// name counts, blanks round a key and a value are cut, one pair of quotes round a value goes too.
// A missing file, section or key gives the default. Texts are code page 932 bytes.
//
// `file` is a bare name such as "quorin.ini". Windows looks for it in its own directory; the native
// half in the directory named by the environment variable QUORIN_INI_DIR, else in /etc. A whole
// path is taken as it stands by both.
#pragma once

#include <cstddef>
#include <span>

namespace qrn {

// Stores the value (or `fallback`, its trailing blanks cut) with a NUL and returns its length in
// bytes without the NUL. A text that does not fit is cut at a character. An empty `out` gives 0.
size_t ReadProfileText(const char* section, const char* key, const char* fallback,
                       std::span<char> out, const char* file) noexcept;

// The number that the value begins with, after one sign: decimal, or 0x, 0o, 0b and digits of that
// base. Digits beyond 32 bits wrap. A value that begins otherwise is 0; an empty one counts as
// missing.
int ReadProfileInt(const char* section, const char* key, int fallback, const char* file) noexcept;

}  // namespace qrn
