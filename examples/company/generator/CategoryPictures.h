// One small picture for each category of the generated company: bitmaps, icons and metafiles in
// turn.
#pragma once

#include <cstddef>
#include <string>

namespace company {

inline constexpr int kPictureSize = 64;  // pixels, both ways

// The file's name, "category01.bmp", and its bytes. `category` counts from 0.
std::string CategoryPictureName(size_t category);
std::string CategoryPicture(size_t category);

}  // namespace company
