// A picture's file: a bitmap of two by two pixels.
#pragma once

#include <string>

namespace qrn::test {

inline std::string SmallBitmap() {
  std::string bytes(
      "BM\x46\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\x02\0\0\0\x02\0\0\0\x01\0\x18\0\0\0\0\0\x10\0\0\0"
      "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0",
      54);
  for (int pixel = 0; pixel < 16; ++pixel) bytes += static_cast<char>(pixel * 15);
  return bytes;
}

}  // namespace qrn::test
