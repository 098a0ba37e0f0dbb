// Registration scripts of any text: read or refused with the line of the mistake.

#include "ole/tables/RegistryScript.h"
#include "tests/fuzz/FuzzInput.h"

using namespace qrn::ole;
using namespace qrn::fuzz;

namespace {

// clang-format off
constexpr const char16_t* kWords[] = {
    u"HKCR ", u"HKLM", u"{", u"{ ", u"}", u" } ", u"NoRemove ", u"val ", u"Delete ", u" = ", u"=",
    u"s ", u"d ", u"m ", u"b ", u"'", u"''", u"%MODULE%", u"%", u"%%", u"&h", u"12", u"fF", u"A",
    u"\\0", u"CLSID", u"\n", u" ", u"'a b'", u"= s x ", u"A { ", u"\u3042", u"\uFF8C\uFF9F",
    u"ForceRemove ", u"{0BE35203-8F91-11CE-9DE3-00AA004BB851}", u"4294967296",
};
// clang-format on

int Depth(const RegistryKey& key) {
  int deepest = 0;
  for (const RegistryKey& below : key.keys) deepest = std::max(deepest, Depth(below));
  return deepest + 1;
}

void Check(const std::u16string& script) {
  ScriptError error;
  const auto roots = ReadRegistryScript(script, {{u"MODULE", u"C:\\x.ocx"}}, error);
  if (roots) {
    for (const RegistryKey& root : *roots) Require(Depth(root) <= 65, "nested too deep");
    return;
  }
  const auto lines = 1 + std::count(script.begin(), script.end(), u'\n');
  Require(error.line >= 1 && error.line <= lines, "a mistake outside the script");
  Require(!error.what.empty(), "a mistake without a reason");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::u16string words;
  std::u16string letters;
  for (size_t i = 0; i < size; ++i) {
    words += kWords[data[i] % std::size(kWords)];
    letters += static_cast<char16_t>(data[i]);
  }
  Check(words);
  Check(u"HKCR { " + words);
  Check(letters);
  return 0;
}
