// A registration script taken apart into words.
#pragma once

#include <string>
#include <string_view>

#include "ole/tables/RegistryScript.h"

namespace qrn::ole {

struct ScriptToken {
  enum class Kind : uint8_t { End, Word, Quoted, Open, Close, Equals };

  Kind kind = Kind::End;
  std::u16string text;  // words and quoted texts, replacements made
  int line = 1;
};

// Hands out the words one by one. Throws ScriptError at a quote that is not closed and at a %NAME%
// that stands for nothing.
class ScriptTokens {
 public:
  ScriptTokens(std::u16string_view script, const Replacements& replacements)
      : script_(script), replacements_(replacements) {}

  ScriptToken Next();

 private:
  void SkipBlanks();
  std::u16string Quoted();
  std::u16string Word();
  std::u16string Replaced(const std::u16string& raw) const;

  std::u16string_view script_;
  const Replacements& replacements_;
  size_t at_ = 0;
  int line_ = 1;
};

}  // namespace qrn::ole
