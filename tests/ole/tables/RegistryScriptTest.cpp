#include <gtest/gtest.h>

#include "ole/tables/RegistryScript.h"

namespace qrn::ole {
namespace {

std::string Ascii(std::u16string_view text) { return std::string(text.begin(), text.end()); }

std::string Show(const RegistryValue& value) {
  const std::string name = Ascii(value.name) + "=";
  if (value.kind == ValueKind::Number) return name + "#" + std::to_string(value.number);
  if (value.kind == ValueKind::Text) return name + Ascii(value.text);
  std::string bytes = name + "b";
  for (uint8_t byte : value.bytes) bytes += "." + std::to_string(byte);
  return bytes;
}

// "name(values; keys)" with a mark before it: ! removed first, ~ kept, - removed.
std::string Show(const RegistryKey& key) {
  constexpr const char* kMarks[] = {"", "!", "~", "-"};
  std::string text = kMarks[static_cast<int>(key.rule)] + Ascii(key.name) + "(";
  for (const RegistryValue& value : key.values) text += Show(value) + ";";
  for (const RegistryKey& below : key.keys) text += Show(below);
  return text + ")";
}

std::string ReadScript(std::u16string_view script) {
  ScriptError error;
  const Replacements replacements{{u"MODULE", u"C:\\it's {my} 100%.ocx"}, {u"NONE", u""}};
  const auto roots = ReadRegistryScript(script, replacements, error);
  if (!roots) return "line " + std::to_string(error.line) + ": " + error.what;
  std::string text;
  for (const RegistryKey& root : *roots) text += Show(root);
  return text;
}

struct ScriptCase {
  const char* what;
  const char16_t* script;
  const char* expected;
};

TEST(RegistryScript, ReadsKeysAndValues) {
  const ScriptCase cases[] = {
      {"nothing", u"", ""},
      {"empty root", u"HKCR { }", "~HKCR()"},
      {"long root name, any case", u"hkey_local_machine{}", "~HKLM()"},
      {"key with a value", u"HKCR { A = s 'x y' }", "~HKCR(A(=x y;))"},
      {"key with keys", u"HKCR { A { B C } D }", "~HKCR(A(B()C())D())"},
      {"rules", u"HKCR { NoRemove A { ForceRemove B Delete C } }", "~HKCR(~A(!B()-C()))"},
      {"named value", u"HKCU { A { val N = s v val 'M M' = d 7 } }", "~HKCU(A(N=v;M M=#7;))"},
      {"hexadecimal", u"HKCR { A = d &hFF }", "~HKCR(A(=#255;))"},
      {"largest number", u"HKCR { A = d 4294967295 }", "~HKCR(A(=#4294967295;))"},
      {"bytes", u"HKCR { A = b 00fF }", "~HKCR(A(=b.0.255;))"},
      {"texts", u"HKCR { A = m 'a\\0b' }", "~HKCR(A(=b.97.0.0.0.98.0.0.0.0.0;))"},
      {"quote inside", u"HKCR { 'A''s' = s '''' }", "~HKCR(A's(=';))"},
      {"braces in quotes", u"HKCR { '{' = s '}' }", "~HKCR({(=};))"},
      {"class id bare", u"HKCR { {0BE35203-8F91-11CE-9DE3-00AA004BB851} = s x }",
       "~HKCR({0BE35203-8F91-11CE-9DE3-00AA004BB851}(=x;))"},
      {"path that looks like script", u"HKCR { A = s '%MODULE%, 3' }",
       "~HKCR(A(=C:\\it's {my} 100%.ocx, 3;))"},
      {"percent sign", u"HKCR { A = s '5%%' }", "~HKCR(A(=5%;))"},
  };
  for (const ScriptCase& row : cases) EXPECT_EQ(ReadScript(row.script), row.expected) << row.what;
}

TEST(RegistryScript, TellsWhereItsMistakeIs) {
  constexpr const char* kRoot = "a root key (HKCR, HKCU, HKLM, HKU) is expected";
  const struct {
    const char16_t* script;
    int line;
    std::string what;
  } cases[] = {
      {u"HKXX {}", 1, kRoot},
      {u"HKCR", 1, "{ is expected"},
      {u"HKCR {", 1, "a key's name or } is expected"},
      {u"HKCR {\n} }", 2, kRoot},
      {u"HKCR {\nA = s 'x\n}", 2, "a quote is not closed"},
      {u"HKCR { A =\n z x }", 2, "a type (s, d, m, b) is expected"},
      {u"HKCR { A = s }", 1, "a value is expected"},
      {u"HKCR { A = d 12x }", 1, "a number is expected"},
      {u"HKCR { A = d 4294967296 }", 1, "a number is too large for 32 bits"},
      {u"HKCR { A = b 123 }", 1, "bytes are written as pairs of hex digits"},
      {u"HKCR { A = b 1g }", 1, "bytes are written as pairs of hex digits"},
      {u"HKCR { val = s x }", 1, "a value's name is expected"},
      {u"HKCR { val X s x }", 1, "= is expected"},
      {u"HKCR { A = s %OTHER% }", 1, "a name between % signs stands for nothing"},
      {u"HKCR { A = s 50% }", 1, "a % is not closed"},
      {u"HKCR {\nForceRemove ''\n}", 2, "a key's name is empty"},
      {u"HKCR { A { Delete '\\' } }", 1, "a key's name is empty"},
      {u"HKCR { NoRemove A { ForceRemove %NONE% } }", 1, "a key's name is empty"},
  };
  for (const auto& row : cases) {
    const std::string found = ReadScript(row.script);
    EXPECT_EQ(found.substr(0, found.find(':')), "line " + std::to_string(row.line));
    EXPECT_NE(found.find(row.what), found.npos) << found;
  }
}

TEST(RegistryScript, NestsToAPoint) {
  const auto nested = [](int depth) {
    std::u16string script = u"HKCR {";
    for (int i = 1; i < depth; ++i) script += u" A {";
    return script + std::u16string(static_cast<size_t>(depth), u'}');
  };
  EXPECT_EQ(ReadScript(nested(64)).substr(0, 5), "~HKCR");
  EXPECT_NE(ReadScript(nested(65)).find("nested too deep"), std::string::npos);
  EXPECT_NE(ReadScript(nested(100000)).find("nested too deep"), std::string::npos);
}

}  // namespace
}  // namespace qrn::ole
