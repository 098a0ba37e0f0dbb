// Registration scripts: text that names keys and values of the registry, in the form that Windows
// development tools have long used. Reading one touches no registry.
//
//   HKCR {
//     NoRemove CLSID {
//       ForceRemove {0BE3...} = s 'Font' {
//         InprocServer32 = s '%MODULE%' { val ThreadingModel = s 'Apartment' }
//       }
//     }
//   }
//
// A name or value that holds blanks or braces stands in single quotes; a quote inside is doubled.
// Values are texts (s), numbers (d, decimal or &h hexadecimal), text lists (m) or bytes (b, hex).
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qrn::ole {

// What happens to a key when the script is run, and in reverse sense at removal.
enum class KeyRule : uint8_t {
  Plain,        // made if missing; removed unless others have put keys below it
  ForceRemove,  // removed first, then made anew; removed with all below it
  NoRemove,     // made if missing; stays at removal, only what the script put below it goes
  Delete,       // removed when the script is run; nothing at removal
};

enum class ValueKind : uint8_t { Text, Number, Texts, Bytes };

struct RegistryValue {
  std::u16string name;  // empty: the key's default value
  ValueKind kind = ValueKind::Text;
  std::u16string text;
  uint32_t number = 0;
  std::vector<uint8_t> bytes;  // also the list form of Texts, as UTF-16 with its two terminators
};

struct RegistryKey {
  std::u16string name;
  KeyRule rule = KeyRule::Plain;
  std::vector<RegistryValue> values;
  std::vector<RegistryKey> keys;
};

// The text's mistake; lines count from 1.
struct ScriptError {
  int line = 0;
  std::string what;
};

// Texts that stand for %NAME% in values and names, by NAME without the signs.
using Replacements = std::map<std::u16string, std::u16string, std::less<>>;

// Reads a script into its root keys (HKCR, HKCU, HKLM or HKU with their long names too).
// Replacements are put in after the text is taken apart, so a path may hold any character. At a
// mistake, nesting past 64 levels included, nothing is given and `error` says where and what.
std::optional<std::vector<RegistryKey>> ReadRegistryScript(std::u16string_view script,
                                                           const Replacements& replacements,
                                                           ScriptError& error);

}  // namespace qrn::ole
