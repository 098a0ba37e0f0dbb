// One `Name = value` line of a form file.
#pragma once

#include <string>
#include <string_view>

#include "host/form/FormFile.h"

namespace qrn::form {

// Splits at the first "=" outside quotes and reads both sides; what follows the value may only be a
// comment. On a mistake fills `*reason` and returns false.
bool ReadPropertyLine(std::string_view line, Property* property, std::string* reason);

// Reads a value from the start of `*text` and moves `*text` behind it.
bool ReadValue(std::string_view* text, PropertyValue* value, std::string* reason);

// Reads a text in quotes, "" standing for one quote, from the start of `*text`.
bool ReadQuoted(std::string_view* text, std::string* value, std::string* reason);

// True if only blanks and a comment are left.
bool OnlyComment(std::string_view rest) noexcept;

}  // namespace qrn::form
