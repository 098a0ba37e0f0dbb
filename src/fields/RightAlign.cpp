#include "fields/RightAlign.h"

#include <algorithm>
#include <cstring>

namespace qrn {

void RightAlignToWidth(std::span<char> text, size_t width) noexcept {
  if (width == 0 || text.empty()) return;
  width = std::min(width, text.size() - 1);
  const auto end = std::find(text.begin(), text.end(), '\0');
  const auto length = static_cast<size_t>(end - text.begin());
  const size_t kept = std::min(length, width);
  std::memmove(text.data() + (width - kept), text.data() + (length - kept), kept);
  std::memset(text.data(), ' ', width - kept);
  text[width] = '\0';
}

}  // namespace qrn
