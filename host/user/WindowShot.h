// Pictures of what the screen shows.
#pragma once

#include <windows.h>

#include <string>

namespace qrn::host {

// Saves a part of the screen (pixels) as a PNG file. Throws std::runtime_error that names the file
// with a plain reason.
void SaveScreen(const RECT& part, const std::string& file);

// The part of the screen a window takes, its title bar included.
RECT ScreenPartOf(HWND window) noexcept;

}  // namespace qrn::host
