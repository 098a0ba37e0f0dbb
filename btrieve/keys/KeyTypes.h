// The key types: which lengths they take, how a field of each is compared, and how it is turned
// into bytes whose plain order is the type's order.
//
// No data is validated: every byte pattern has a place in the order. Nibbles above 9 and characters
// that are no digits count as 0, a sign that is not a negative one is positive, minus zero equals
// zero.
#pragma once

#include <cstddef>
#include <cstdint>

#include "btrieve.h"

namespace btrieve {

enum class KeyType : uint8_t {
#define BTRIEVE_KEY_TYPE(name, number) name = (number),
  BTR_KEY_TYPES(BTRIEVE_KEY_TYPE)
#undef BTRIEVE_KEY_TYPE
};

// Less than, equal to or greater than 0, as the field `a` sorts before, with or after `b`. Both
// have `length` bytes, a length the type takes. `map`, where not null, is applied to the bytes of
// string types first (256 entries).
using CompareFields = int (*)(const uint8_t* a, const uint8_t* b, size_t length,
                              const uint8_t* map) noexcept;

// Writes the normalised bytes of a field: for any two fields memcmp of the results gives the same
// answer as CompareFields. Writes exactly OrderedSize() bytes.
using OrderField = void (*)(const uint8_t* field, size_t length, const uint8_t* map,
                            uint8_t* out) noexcept;

struct KeyTypeRow {
  uint8_t code;
  uint16_t shortest;  // bytes; the lengths a key segment of the type may have
  uint16_t longest;   // bytes
  bool (*takesLength)(size_t length) noexcept;  // within these bounds
  bool isString;  // takes case folding, collating sequences, and any length in a condition
  CompareFields compare;
  OrderField order;
  size_t (*orderedSize)(size_t length, bool mapped) noexcept;

  bool Takes(size_t length) const noexcept {
    return length >= shortest && length <= longest && takesLength(length);
  }
};

// Null for a code that is no key type.
const KeyTypeRow* FindKeyType(uint8_t code) noexcept;

// Folds a-z to A-Z and nothing else, byte by byte (trail bytes of double-byte characters too).
const uint8_t* CaseFoldMap() noexcept;

}  // namespace btrieve
