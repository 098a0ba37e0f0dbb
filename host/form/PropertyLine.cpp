// Values: "text" with "" for a quote, 12, -1 'True, 8.25, &H8000000F&, "form.frx":0000, ^S.
#include "host/form/PropertyLine.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "host/form/SourceText.h"

namespace qrn::form {
namespace {

bool Fail(std::string* reason, std::string text) {
  *reason = std::move(text);
  return false;
}

// Hexadecimal digits of at most 32 bits from the start of `*text`.
bool TakeHex(std::string_view* text, uint32_t* value) {
  const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), *value, 16);
  if (error != std::errc()) return false;
  text->remove_prefix(static_cast<size_t>(end - text->data()));
  return true;
}

bool ReadHex(std::string_view* text, PropertyValue* value, std::string* reason) {
  text->remove_prefix(2);
  uint32_t bits = 0;
  if (!TakeHex(text, &bits)) return Fail(reason, "&H needs up to eight hexadecimal digits");
  if (text->starts_with('&')) text->remove_prefix(1);
  *value = static_cast<int32_t>(bits);
  return true;
}

bool ReadNumber(std::string_view* text, PropertyValue* value, std::string* reason) {
  double number = 0;
  const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), number);
  if (error != std::errc() || !std::isfinite(number)) {
    return Fail(reason, "the value is no number; a text stands in quotes");
  }
  const std::string_view digits(text->data(), static_cast<size_t>(end - text->data()));
  const bool whole = digits.find_first_of(".eE") == std::string_view::npos &&
                     std::abs(number) <= std::numeric_limits<int32_t>::max();
  text->remove_prefix(digits.size());
  if (whole) {
    *value = static_cast<int32_t>(number);
  } else {
    *value = number;
  }
  return true;
}

// The `:0A3C` behind a file name in quotes.
bool ReadOffset(std::string_view* text, FileReference* reference, std::string* reason) {
  text->remove_prefix(1);
  if (TakeHex(text, &reference->offset)) return true;
  return Fail(reason, "a file name in quotes and ':' need a hexadecimal offset");
}

bool ReadTextOrReference(std::string_view* text, PropertyValue* value, std::string* reason) {
  FileReference reference;
  reference.isText = text->starts_with('$');
  if (reference.isText) text->remove_prefix(1);
  std::string quoted;
  if (!ReadQuoted(text, &quoted, reason)) return false;
  if (!text->starts_with(':')) {
    if (reference.isText) return Fail(reason, "$\"file\" needs ':' and an offset behind it");
    *value = std::move(quoted);
    return true;
  }
  reference.fileName = std::move(quoted);
  if (!ReadOffset(text, &reference, reason)) return false;
  *value = std::move(reference);
  return true;
}

void ReadBareWord(std::string_view* text, PropertyValue* value) {
  const size_t length = std::min(text->find_first_of(" \t'"), text->size());
  *value = BareWord{std::string(text->substr(0, length))};
  text->remove_prefix(length);
}

}  // namespace

bool ReadQuoted(std::string_view* text, std::string* value, std::string* reason) {
  if (!text->starts_with('"')) return Fail(reason, "a text in quotes is expected");
  value->clear();
  for (size_t at = 1; at < text->size(); ++at) {
    if ((*text)[at] != '"') {
      *value += (*text)[at];
    } else if (at + 1 < text->size() && (*text)[at + 1] == '"') {
      *value += '"';
      ++at;
    } else {
      text->remove_prefix(at + 1);
      return true;
    }
  }
  return Fail(reason, "the closing quote is missing");
}

bool OnlyComment(std::string_view rest) noexcept {
  rest = Trimmed(rest);
  return rest.empty() || rest[0] == '\'';
}

bool ReadValue(std::string_view* text, PropertyValue* value, std::string* reason) {
  if (text->empty() || (*text)[0] == '\'') return Fail(reason, "the value is missing");
  const char first = (*text)[0];
  if (first == '"' || first == '$') return ReadTextOrReference(text, value, reason);
  if (first == '&' && text->size() > 1 && SameWord(text->substr(1, 1), "H")) {
    return ReadHex(text, value, reason);
  }
  if (IsDigit(first) || first == '-' || first == '.') return ReadNumber(text, value, reason);
  if (first == '^' || first == '+' || first == '%' || first == '{') {
    ReadBareWord(text, value);
    return true;
  }
  return Fail(reason, "the value is no number; a text stands in quotes");
}

bool ReadPropertyLine(std::string_view line, Property* property, std::string* reason) {
  const size_t equals = line.find('=');
  const size_t quote = line.find('"');
  if (equals == std::string_view::npos || quote < equals) {
    return Fail(reason, "a line 'Name = value', Begin, BeginProperty or End is expected");
  }
  const std::string_view name = Trimmed(line.substr(0, equals));
  if (name.empty() || name.find_first_of(" \t'") != std::string_view::npos) {
    return Fail(reason, "the name of the property before '=' is missing or no name");
  }
  property->name = name;
  std::string_view rest = Trimmed(line.substr(equals + 1));
  if (!ReadValue(&rest, &property->value, reason)) {
    *reason = property->name + ": " + *reason;
    return false;
  }
  if (!OnlyComment(rest)) {
    return Fail(reason, property->name + ": what stands behind the value is not understood");
  }
  return true;
}

}  // namespace qrn::form
