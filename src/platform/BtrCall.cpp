#include "platform/BtrCall.h"

#include <new>
#include <utility>

#include "platform/SystemLibrary.h"

namespace qrn {
namespace {

constexpr unsigned kBtrCallOrdinal = 1;

int16_t BTR_CALL NotActive(uint16_t, void*, void*, uint32_t*, void*, uint8_t, int8_t) {
  return BtrStatusNotActive;
}

// A library without the entry is no record manager.
BtrCallFunction RealBtrCall() {
  static const SystemLibrary library("w64btrv");
  const auto found = library.Find<BtrCallFunction>("BTRCALL", kBtrCallOrdinal);
  return found != nullptr ? found : &NotActive;
}

int16_t BTR_CALL FirstCall(uint16_t operation, void* posBlock, void* data, uint32_t* dataLength,
                           void* key, uint8_t keyLength, int8_t keyNumber);

// `real` finds itself at the first call; `current` is it or a replacement.
constinit BtrCallFunction real = &FirstCall;
constinit BtrCallFunction replacement = nullptr;
constinit BtrCallFunction current = &FirstCall;

int16_t BTR_CALL FirstCall(uint16_t operation, void* posBlock, void* data, uint32_t* dataLength,
                           void* key, uint8_t keyLength, int8_t keyNumber) {
  try {
    real = RealBtrCall();
  } catch (const std::bad_alloc&) {  // looked for again by the next call
    return BtrStatusNotActive;
  }
  current = real;
  return real(operation, posBlock, data, dataLength, key, keyLength, keyNumber);
}

}  // namespace

int16_t BtrCall(uint16_t operation, void* posBlock, void* data, uint32_t* dataLength, void* key,
                uint8_t keyLength, int8_t keyNumber) noexcept {
  return current(operation, posBlock, data, dataLength, key, keyLength, keyNumber);
}

BtrCallFunction ReplaceBtrCall(BtrCallFunction function) noexcept {
  current = function != nullptr ? function : real;
  return std::exchange(replacement, function);
}

}  // namespace qrn
