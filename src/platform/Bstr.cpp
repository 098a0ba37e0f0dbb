// Filling; allocation and release are the system's (Bstr_win.cpp, Bstr_posix.cpp).
#include "platform/Bstr.h"

#include <algorithm>
#include <cstring>

#include "platform/BstrAllocation.h"
#include "platform/PlainText.h"
#include "platform/Seam.h"

namespace qrn {
namespace {

constinit Seam<BstrAllocator> allocateText{&AllocateSystemBstr};

}  // namespace

BstrText AllocateBstr(std::u16string_view wide) noexcept {
  const BstrText text = allocateText(wide.size());
  if (text != nullptr) *std::copy(wide.begin(), wide.end(), text) = u'\0';
  return text;
}

BstrText AllocatePlainBstr(std::string_view plain) noexcept {
  const BstrText text = allocateText(plain.size());
  if (text == nullptr) return nullptr;
  WidenPlain(plain, text);
  text[plain.size()] = u'\0';
  return text;
}

BstrText AllocateByteBstr(std::string_view bytes) noexcept {
  const BstrText text = allocateText(bytes.size());
  if (text == nullptr) return nullptr;
  auto* start = reinterpret_cast<uint8_t*>(text);
  std::memcpy(start, bytes.data(), bytes.size());
  std::memset(start + bytes.size(), 0, bytes.size() + sizeof(char16_t));
  const auto count = static_cast<uint32_t>(bytes.size());
  std::memcpy(start - sizeof count, &count, sizeof count);
  return text;
}

uint32_t BstrByteLength(const char16_t* text) noexcept {
  if (text == nullptr) return 0;
  uint32_t count = 0;
  std::memcpy(&count, reinterpret_cast<const uint8_t*>(text) - sizeof count, sizeof count);
  return count;
}

BstrAllocator ReplaceBstrAllocator(BstrAllocator allocator) noexcept {
  return allocateText.Replace(allocator);
}

}  // namespace qrn
