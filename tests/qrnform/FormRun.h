// A form run from its text, with a user script before it.
#pragma once

#include <string>
#include <vector>

namespace qrn::tests {

struct RunResult {
  std::string printed;  // what code and script printed
  std::string failure;  // of the script, or what was wrong with the form
  std::string told;     // to the user, each with a line's end
  int faults = 0;       // failures of code that nothing caught
  long left = 0;        // objects of the container that still live
};

struct RunRequest {
  std::vector<std::string> forms;  // texts of form files, UTF-8; the first is shown
  std::string script = {};
  bool design = false;
};

// The forms stand in files form1.frm, form2.frm ... of a folder of their own; their names in
// mistakes have no folder. The module's controls are known.
RunResult RunForms(const RunRequest& request);

// A form file of `controls` (Begin ... End lines) and `code`; the code begins at line 10 plus the
// lines of `controls`.
std::string FormText(const std::string& controls, const std::string& code,
                     const std::string& name = "frmTest");

}  // namespace qrn::tests
