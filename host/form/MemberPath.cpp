#include "host/form/MemberPath.h"

#include <charconv>

#include "host/form/PropertyLine.h"
#include "host/form/SourceText.h"

namespace qrn::form {
namespace {

void SkipBlanks(std::string_view* text) {
  while (text->starts_with(' ') || text->starts_with('\t')) text->remove_prefix(1);
}

bool TakeNextSign(std::string_view* text, char sign) {
  SkipBlanks(text);
  return TakeSign(text, sign);
}

std::string_view TakeName(std::string_view* text) {
  size_t length = 0;
  while (length < text->size() && IsNamePart((*text)[length])) ++length;
  const std::string_view name = text->substr(0, length);
  text->remove_prefix(length);
  return name;
}

bool TakeWordValue(std::string_view* text, ScriptValue* value) {
  const std::string_view word = TakeName(text);
  *value = SameWord(word, "True");
  return SameWord(word, "True") || SameWord(word, "False");
}

bool TakeValue(std::string_view* text, ScriptValue* value) {
  SkipBlanks(text);
  if (!text->empty() && IsNameStart((*text)[0])) return TakeWordValue(text, value);
  PropertyValue read;
  std::string reason;
  if (!ReadValue(text, &read, &reason)) return false;
  if (const std::string* words = std::get_if<std::string>(&read)) return *value = *words, true;
  if (const int32_t* whole = std::get_if<int32_t>(&read)) return *value = *whole, true;
  if (const double* number = std::get_if<double>(&read)) return *value = *number, true;
  return false;
}

bool TakeArguments(std::string_view* text, std::vector<ScriptValue>* arguments) {
  if (!TakeNextSign(text, '(')) return true;
  if (TakeNextSign(text, ')')) return true;
  do {
    ScriptValue value;
    if (!TakeValue(text, &value)) return false;
    arguments->push_back(std::move(value));
  } while (TakeNextSign(text, ','));
  return TakeNextSign(text, ')');
}

}  // namespace

std::optional<MemberPath> MemberPathOf(std::string_view text) {
  MemberPath path;
  do {
    PathStep step;
    step.name = TakeName(&text);
    if (!IsName(step.name) || !TakeArguments(&text, &step.arguments)) return std::nullopt;
    path.push_back(std::move(step));
  } while (TakeNextSign(&text, '.'));
  if (!text.empty()) return std::nullopt;
  return path;
}

std::optional<ScriptValue> ScriptValueOf(std::string_view text) {
  ScriptValue value;
  if (!TakeValue(&text, &value) || !Trimmed(text).empty()) return std::nullopt;
  return value;
}

std::string ValueText(const ScriptValue& value) {
  if (const std::string* text = std::get_if<std::string>(&value)) return *text;
  if (const bool* truth = std::get_if<bool>(&value)) return *truth ? "True" : "False";
  char digits[32];
  const auto [end, error] = std::visit(
      [&digits](const auto& number) -> std::to_chars_result {
        using Number = std::decay_t<decltype(number)>;
        if constexpr (std::is_same_v<Number, int32_t> || std::is_same_v<Number, double>) {
          return std::to_chars(digits, digits + sizeof digits, number);
        } else {
          return {digits, std::errc()};
        }
      },
      value);
  return error == std::errc() ? std::string(digits, end) : std::string();
}

}  // namespace qrn::form
