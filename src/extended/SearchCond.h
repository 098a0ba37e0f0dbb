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
#include <string>
#include <vector>

#include "core/DbEngine.h"
#include "core/DbTypes.h"

namespace qrn {

// Terms (BtrTerm and its operand) back to back. No terms: every record matches.
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

// What ParseSearchCond would show, and where.
struct SearchFault {
  int message = 0;   // a MessageId; 0 without a fault
  std::string word;  // what the message names
  size_t place =
      0;  // bytes of the text in front of what is wrong; all that was read without a fault
};

// As ParseSearchCond, but nothing is shown; without memory std::bad_alloc.
[[nodiscard]] std::optional<SearchCondition> ReadSearchCond(const QuorinSettings& settings,
                                                            const DbTableInfo& table,
                                                            const char* text, bool ignoreCase,
                                                            SearchFault& fault);

}  // namespace qrn
