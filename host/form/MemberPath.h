// What a user script names of a form: edtName.Text, grid1.TextMatrix(1, 2), cmd(0).Caption,
// Form2.edtName.Text.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace qrn::form {

// A text in quotes, a whole number, a number with a fraction, True or False.
using ScriptValue = std::variant<std::string, int32_t, double, bool>;

struct PathStep {
  std::string name;
  std::vector<ScriptValue> arguments;
};

using MemberPath = std::vector<PathStep>;

// Nothing if the text is not such a path as a whole.
std::optional<MemberPath> MemberPathOf(std::string_view text);

// Reads one value that takes all of the text.
std::optional<ScriptValue> ScriptValueOf(std::string_view text);

// The value as people write it: a text without quotes, True, False, 12, 0.5.
std::string ValueText(const ScriptValue& value);

}  // namespace qrn::form
