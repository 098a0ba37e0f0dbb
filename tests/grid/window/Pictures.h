// What a window shows on the screen, beside a picture that somebody has looked at.
#pragma once

#include <windows.h>

#include <string>

namespace qrn::test {

// Compares the window with NAME.png of the pictures kept with the tests. Empty where they are
// alike: at most one pixel in two hundred differs by more than a trace. Otherwise what is wrong;
// the build's folder of failed pictures then has NAME.png as it is, NAME-wanted.png and
// NAME-difference.png. With QRN_KEEP_PICTURES set the window becomes the picture that is kept.
std::string CompareWithPicture(HWND window, const std::string& name);

}  // namespace qrn::test
