// Writes a type library from the rows that dispatch reads, so that what designers are told and what
// calls do cannot drift apart.
#pragma once

#include "ole/tables/Members.h"

namespace qrn::ole {

// Writes `library` to a file of that path, for 64-bit Windows. Texts go in the ANSI code page of
// the process, so Japanese needs a Japanese one. Throws Failure.
void WriteTypeLibrary(const LibraryTable& library, const wchar_t* path);

}  // namespace qrn::ole
