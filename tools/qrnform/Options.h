// The command line of qrnform.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace qrn::qrnform {

struct Options {
  std::vector<std::string> forms;    // the first is shown
  std::vector<std::string> modules;  // taken as they are, registered or not
  std::string script;
  std::string shot;
  bool design = false;
  bool trace = false;
  bool boxes = true;
};

// Reads the arguments, UTF-8, without the program's name. When there is nothing to run (a mistake,
// or help was asked for) `*exitCode` says how to end, and what there was to say has been written.
std::optional<Options> ReadOptions(std::vector<std::string> arguments, int* exitCode);

}  // namespace qrn::qrnform
