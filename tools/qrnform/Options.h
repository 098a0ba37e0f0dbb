// The command line of qrnform.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/form/Language.h"

namespace qrn::qrnform {

struct Options {
  std::vector<std::string> forms;    // the first is shown
  std::vector<std::string> modules;  // taken as they are, registered or not
  std::string script;
  std::string shot;
  bool design = false;  // forms has one at most then: none is a new form
  bool trace = false;
  bool boxes = true;
  form::Language language = form::Language::Japanese;  // the designer's
};

// Reads the arguments, UTF-8, without the program's name. When there is nothing to run (a mistake,
// or help was asked for) `*exitCode` says how to end, and what there was to say has been written.
std::optional<Options> ReadOptions(std::vector<std::string> arguments, int* exitCode);

}  // namespace qrn::qrnform
