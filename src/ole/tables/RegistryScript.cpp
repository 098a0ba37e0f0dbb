#include "ole/tables/RegistryScript.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "ole/tables/RegistryTokens.h"

namespace qrn::ole {
namespace {

using Kind = ScriptToken::Kind;

constexpr int kDeepest = 64;

std::u16string Upper(std::u16string text) {
  for (char16_t& c : text) {
    if (c >= u'a' && c <= u'z') c = static_cast<char16_t>(c - 32);
  }
  return text;
}

struct RootName {
  std::u16string_view written;
  std::u16string_view means;
};
constexpr RootName kRoots[] = {
    {u"HKCR", u"HKCR"},      {u"HKEY_CLASSES_ROOT", u"HKCR"},  {u"HKCU", u"HKCU"},
    {u"HKLM", u"HKLM"},      {u"HKEY_CURRENT_USER", u"HKCU"},  {u"HKU", u"HKU"},
    {u"HKEY_USERS", u"HKU"}, {u"HKEY_LOCAL_MACHINE", u"HKLM"},
};

struct RuleName {
  std::u16string_view written;
  KeyRule means;
};
constexpr RuleName kRules[] = {
    {u"FORCEREMOVE", KeyRule::ForceRemove},
    {u"NOREMOVE", KeyRule::NoRemove},
    {u"DELETE", KeyRule::Delete},
};

int HexDigit(char16_t c) {
  if (c >= u'0' && c <= u'9') return c - u'0';
  const char16_t lower = static_cast<char16_t>(c | 0x20);
  return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : -1;
}

// Walks the words. Throws ScriptError.
class ScriptReader {
 public:
  ScriptReader(std::u16string_view script, const Replacements& replacements)
      : tokens_(script, replacements) {
    Step();
  }

  std::vector<RegistryKey> Roots() {
    std::vector<RegistryKey> roots;
    while (now_.kind != Kind::End) roots.push_back(Root());
    return roots;
  }

 private:
  [[noreturn]] void Fail(const char* what) const { throw ScriptError{now_.line, what}; }
  void Step() { now_ = tokens_.Next(); }
  bool At(Kind kind) const { return now_.kind == kind; }
  bool AtWord(std::u16string_view word) const { return At(Kind::Word) && Upper(now_.text) == word; }

  std::u16string TakeText(const char* missing) {
    if (!At(Kind::Word) && !At(Kind::Quoted)) Fail(missing);
    std::u16string text = std::move(now_.text);
    Step();
    return text;
  }

  RegistryKey Root() {
    const auto* found =
        std::ranges::find_if(kRoots, [&](const RootName& root) { return AtWord(root.written); });
    if (found == std::end(kRoots)) Fail("a root key (HKCR, HKCU, HKLM, HKU) is expected");
    RegistryKey root;
    root.name = found->means;
    root.rule = KeyRule::NoRemove;
    Step();
    if (!At(Kind::Open)) Fail("{ is expected");
    Body(root, 1);
    return root;
  }

  void Body(RegistryKey& key, int depth) {
    if (depth > kDeepest) Fail("keys are nested too deep");
    Step();
    while (!At(Kind::Close)) {
      if (AtWord(u"VAL")) {
        Step();
        key.values.push_back(NamedValue());
      } else {
        key.keys.push_back(Key(depth));
      }
    }
    Step();
  }

  RegistryKey Key(int depth) {
    RegistryKey key;
    key.rule = Rule();
    if (NamesTheKeyAbove()) Fail("a key's name is empty");
    key.name = TakeText("a key's name or } is expected");
    if (At(Kind::Equals)) key.values.push_back(Value());
    if (At(Kind::Open)) Body(key, depth + 1);
    return key;
  }

  // To the system no name stands for the key that holds it: its removal would take all of that.
  bool NamesTheKeyAbove() const {
    return (At(Kind::Word) || At(Kind::Quoted)) &&
           now_.text.find_first_not_of(u'\\') == now_.text.npos;
  }

  KeyRule Rule() {
    for (const RuleName& rule : kRules) {
      if (!AtWord(rule.written)) continue;
      Step();
      return rule.means;
    }
    return KeyRule::Plain;
  }

  RegistryValue NamedValue() {
    std::u16string name = TakeText("a value's name is expected");
    if (!At(Kind::Equals)) Fail("= is expected");
    RegistryValue value = Value();
    value.name = std::move(name);
    return value;
  }

  RegistryValue Value() {
    Step();
    const std::u16string type = Upper(At(Kind::Word) ? now_.text : u"");
    if (type.size() != 1) Fail("a type (s, d, m, b) is expected");
    Step();
    RegistryValue value;
    value.text = TakeText("a value is expected");
    Interpret(type[0], value);
    return value;
  }

  void Interpret(char16_t type, RegistryValue& value) const {
    if (type == u'D') {
      value.kind = ValueKind::Number;
      value.number = Number(value.text);
    } else if (type == u'B') {
      value.kind = ValueKind::Bytes;
      value.bytes = Bytes(value.text);
    } else if (type == u'M') {
      value.kind = ValueKind::Texts;
      value.bytes = Texts(value.text);
    } else if (type != u'S') {
      Fail("a type (s, d, m, b) is expected");
    }
  }

  uint32_t Number(std::u16string_view text) const {
    const bool hex = text.starts_with(u"&h") || text.starts_with(u"&H");
    if (hex) text.remove_prefix(2);
    uint64_t number = 0;
    for (char16_t c : text) {
      const int digit = HexDigit(c);
      if (digit < 0 || (!hex && digit > 9)) Fail("a number is expected");
      number = number * (hex ? 16 : 10) + static_cast<uint64_t>(digit);
      if (number > UINT32_MAX) Fail("a number is too large for 32 bits");
    }
    if (text.empty()) Fail("a number is expected");
    return static_cast<uint32_t>(number);
  }

  std::vector<uint8_t> Bytes(std::u16string_view text) const {
    if (text.size() % 2 != 0) Fail("bytes are written as pairs of hex digits");
    std::vector<uint8_t> bytes;
    for (size_t i = 0; i < text.size(); i += 2) {
      const int high = HexDigit(text[i]);
      const int low = HexDigit(text[i + 1]);
      if (high < 0 || low < 0) Fail("bytes are written as pairs of hex digits");
      bytes.push_back(static_cast<uint8_t>(high * 16 + low));
    }
    return bytes;
  }

  // Texts divided by the two characters \0, each closed by a NUL, the list by one more.
  static std::vector<uint8_t> Texts(std::u16string text) {
    for (size_t at; (at = text.find(u"\\0")) != text.npos;) text.replace(at, 2, 1, u'\0');
    text.append(text.empty() || text.back() != 0 ? 2 : 1, u'\0');
    std::vector<uint8_t> bytes(text.size() * sizeof(char16_t));
    std::memcpy(bytes.data(), text.data(), bytes.size());
    return bytes;
  }

  ScriptTokens tokens_;
  ScriptToken now_;
};

}  // namespace

std::optional<std::vector<RegistryKey>> ReadRegistryScript(std::u16string_view script,
                                                           const Replacements& replacements,
                                                           ScriptError& error) {
  try {
    return ScriptReader(script, replacements).Roots();
  } catch (const ScriptError& found) {
    error = found;
    return std::nullopt;
  }
}

}  // namespace qrn::ole
