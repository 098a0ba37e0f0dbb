// The types Visual Basic declares and the script engine does not know: a variable there takes
// anything. What a declaration promised is kept by converting what is assigned.
#pragma once

#include <string_view>

namespace qrn::form {

struct VbType {
  std::string_view name;
  char mark;  // the type character, 0 if it has none
  std::string_view
      conversion;            // the function that converts to it, empty where nothing is converted
  std::string_view initial;  // what a new variable holds; empty for Empty
};

// The type of that name, whatever its case. A name that is none of Visual Basic's own stands for a
// class, whose variables begin as Nothing.
const VbType& TypeNamed(std::string_view name) noexcept;

// The type a character behind a name gives; Variant for 0.
const VbType& TypeMarked(char mark) noexcept;

const VbType& VariantType() noexcept;
const VbType& LongType() noexcept;

}  // namespace qrn::form
