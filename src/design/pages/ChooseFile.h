// The system's dialog for files.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace qrn::design {

// Asks for one of the files of a dictionary: its whole path, code page 932, up to 259 bytes.
// Nothing if the user does not choose. Messages are dispatched meanwhile.
std::optional<std::string> ChooseDictionaryFile(HWND owner);

}  // namespace qrn::design
