// Search conditions: the text that a developer writes to let the record manager filter records,
// compiled into the filter terms of an extended request (docs/search-conditions.md).
//
// A condition is a flat chain of terms, `@field operator value`, joined by `&` and `|`. There is no
// expression tree: the record manager judges the terms strictly from left to right, and each value
// is turned into the field's stored bytes here, so that it compares stored forms only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "core/DbEngine.h"
#include "core/DbTypes.h"

namespace qrn {

// Comparison codes of a term.
enum class Comparison : uint8_t {
  Equal = 1,
  Greater = 2,
  Less = 3,
  NotEqual = 4,
  GreaterOrEqual = 5,
  LessOrEqual = 6,
};

// Added to the comparison code.
inline constexpr uint8_t kComparesField = 64;  // the right side is a field, not a constant
inline constexpr uint8_t kIgnoresCase = 128;   // types 0, 10 and 11 only

// What follows a term.
enum class Connector : uint8_t { None = 0, And = 1, Or = 2 };

#pragma pack(push, 1)
// The head of a term as it goes to the record manager, little-endian. The value follows: a constant
// of `Length` bytes in the field's stored form, or the u16 offset of a second field.
struct ExFilterTerm {
  uint8_t Type;     // low 8 bits of the field's type code
  uint16_t Length;  // the field's size
  uint16_t Offset;  // from the start of the record
  uint8_t Comparison;
  uint8_t Logic;  // a Connector
};
#pragma pack(pop)
static_assert(sizeof(ExFilterTerm) == 7);

// Terms back to back. No terms: every record matches.
struct SearchCondition {
  std::vector<uint8_t> Terms;
  uint16_t TermCount = 0;  // more than 65,535 terms count as 65,535; no request can carry them
};

// Compiles `text` (code page 932; null and empty give no terms) for `table`. With `ignoreCase`,
// terms on text fields compare without regard to case.
//
// A field-to-field term ends in the second field's offset. A term without a value (`@0 =`, or two
// delimiters with nothing between them) ends in two zero bytes, whatever its field's size: such a
// request is well formed for a field of two bytes only, and refused by the record manager
// otherwise.
//
// Nothing after a message: VE041 a term does not start with `@`, VE042 no operator, VE818 and VE025
// no such field, VE043 a field of variable length, VE046 a connector where a value should be,
// VE001 without memory.
[[nodiscard]] std::optional<SearchCondition> ParseSearchCond(const DbEngine& engine,
                                                             const DbTableInfo& table,
                                                             const char* text, bool ignoreCase);

}  // namespace qrn
