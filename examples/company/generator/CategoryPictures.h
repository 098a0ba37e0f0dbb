// One small picture for each category of the generated company, as a bitmap file.
#pragma once

#include <cstddef>
#include <string>

namespace company {

inline constexpr int kPictureSize = 64;  // pixels, both ways

// The bytes of a .bmp file of 16 colours. `category` counts from 0.
std::string CategoryPicture(size_t category);

}  // namespace company
