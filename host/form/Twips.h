// What form files count places and sizes in.
#pragma once

namespace qrn::form {

inline constexpr int kTwipsPerPixel = 15;  // fixed, whatever the screen's resolution

}  // namespace qrn::form
