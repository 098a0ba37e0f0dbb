#include "host/form/KeyNames.h"

#include <cctype>

#include "host/form/SourceText.h"

namespace qrn::form {
namespace {

struct KeyName {
  std::string_view name;
  uint16_t virtualKey;
};

// clang-format off
constexpr KeyName kKeys[] = {
    {"Backspace", 0x08}, {"Tab",    0x09}, {"Enter", 0x0D}, {"Return", 0x0D}, {"Pause",    0x13},
    {"Escape",    0x1B}, {"Esc",    0x1B}, {"Space", 0x20}, {"PageUp", 0x21}, {"PageDown", 0x22},
    {"End",       0x23}, {"Home",   0x24}, {"Left",  0x25}, {"Up",     0x26}, {"Right",    0x27},
    {"Down",      0x28}, {"Insert", 0x2D}, {"Delete", 0x2E}, {"Del",   0x2E}, {"Menu",     0x5D},
};
// clang-format on

constexpr uint16_t kFirstFunctionKey = 0x70;
constexpr int kFunctionKeys = 24;

std::optional<uint16_t> FunctionKey(std::string_view name) noexcept {
  if (name.size() < 2 || name.size() > 3 || (name[0] != 'F' && name[0] != 'f')) return std::nullopt;
  int number = 0;
  for (const char digit : name.substr(1)) {
    if (!IsDigit(digit)) return std::nullopt;
    number = number * 10 + (digit - '0');
  }
  if (number < 1 || number > kFunctionKeys) return std::nullopt;
  return static_cast<uint16_t>(kFirstFunctionKey + number - 1);
}

std::optional<uint16_t> KeyOf(std::string_view name) noexcept {
  if (name.size() == 1 && std::isalnum(static_cast<unsigned char>(name[0]))) {
    return static_cast<uint16_t>(std::toupper(static_cast<unsigned char>(name[0])));
  }
  for (const KeyName& key : kKeys) {
    if (SameWord(key.name, name)) return key.virtualKey;
  }
  return FunctionKey(name);
}

bool TakeModifier(std::string_view name, KeyChord* chord) noexcept {
  if (SameWord(name, "Shift")) return chord->shift = true;
  if (SameWord(name, "Ctrl")) return chord->control = true;
  if (SameWord(name, "Alt")) return chord->alt = true;
  return false;
}

}  // namespace

std::optional<KeyChord> KeyChordOf(std::string_view text) noexcept {
  KeyChord chord;
  for (size_t plus = text.find('+'); plus != std::string_view::npos; plus = text.find('+')) {
    if (!TakeModifier(text.substr(0, plus), &chord)) return std::nullopt;
    text.remove_prefix(plus + 1);
  }
  const std::optional<uint16_t> key = KeyOf(text);
  if (!key) return std::nullopt;
  chord.virtualKey = *key;
  return chord;
}

}  // namespace qrn::form
