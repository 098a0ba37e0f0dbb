// Rewriting of what stands in expressions: names that mean something else to the script engine.
#pragma once

#include <map>
#include <string>

#include "host/form/VbSurvey.h"

namespace qrn::form {

// What names mean at a place in the code.
struct Names {
  const Survey* survey = nullptr;
  Scope locals;  // of the procedure, parameters and Static variables included
  std::map<std::string, std::string>
      statics;  // lower-case name to the module variable that keeps it

  // The nearest declaration, null if there is none.
  const Declared* Find(std::string_view name) const;
};

// The tokens with names exchanged and type characters gone. A word that cannot be had is a mistake
// of `line`.
Tokens RewriteExpression(const Tokens& tokens, const Names& names, int line, Mistakes& mistakes);

}  // namespace qrn::form
