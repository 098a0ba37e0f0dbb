#include <cstdlib>
#include <cstring>

#include "platform/BstrAllocation.h"

namespace qrn {
namespace {

constexpr size_t kPrefixSize = sizeof(uint32_t);

}  // namespace

BstrText AllocateSystemBstr(size_t units) {
  const auto byteCount = static_cast<uint32_t>(units * sizeof(char16_t));
  auto* block = static_cast<uint8_t*>(std::malloc(kPrefixSize + byteCount + sizeof(char16_t)));
  if (block == nullptr) return nullptr;
  std::memcpy(block, &byteCount, kPrefixSize);
  const auto text = reinterpret_cast<BstrText>(block + kPrefixSize);
  text[units] = u'\0';
  return text;
}

void FreeBstr(BstrText text) noexcept {
  if (text != nullptr) std::free(reinterpret_cast<uint8_t*>(text) - kPrefixSize);
}

}  // namespace qrn
