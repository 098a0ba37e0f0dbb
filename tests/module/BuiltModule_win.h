// The module file beside the test program.
#pragma once

#include <windows.h>

namespace qrn::test {

// Its path as the system likes it.
const wchar_t* ModulePath();

// Loads it anew, reading the settings as they are now; lets go of the one loaded before. Ends the
// test run when it cannot be loaded.
HMODULE LoadModule();

}  // namespace qrn::test
