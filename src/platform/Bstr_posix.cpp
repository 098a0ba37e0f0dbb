#include <cstring>

#include "platform/BstrAllocation.h"
#include "platform/Memory.h"

namespace qrn {
namespace {

constexpr size_t kPrefixSize = sizeof(uint32_t);

}  // namespace

BstrText AllocateSystemBstr(size_t units) {
  const auto byteCount = static_cast<uint32_t>(units * sizeof(char16_t));
  auto* block = static_cast<uint8_t*>(AllocateZeroed(kPrefixSize + byteCount + sizeof(char16_t)));
  if (block == nullptr) return nullptr;
  std::memcpy(block, &byteCount, kPrefixSize);
  return reinterpret_cast<BstrText>(block + kPrefixSize);
}

void FreeBstr(BstrText text) noexcept {
  if (text != nullptr) FreeMemory(reinterpret_cast<uint8_t*>(text) - kPrefixSize);
}

}  // namespace qrn
