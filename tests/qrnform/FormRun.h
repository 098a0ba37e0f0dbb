// Forms run as qrnform runs them, with a script's user before them, and what came of it.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace qrn::host {
class Form;
}

namespace qrn::tests {

struct RunResult {
  std::string failure;  // of the script or the form, empty if there was none
  std::string printed;  // what code and script printed, UTF-8
  std::string told;     // what was told to the user, each with a line's end
  int faults = 0;       // failures of code that nothing caught
  long left = 0;        // objects of the container that still live
};

struct RunRequest {
  std::vector<std::string> forms;  // texts of form files, UTF-8; the first is shown
  std::string script = {};
  bool design = false;
  size_t given = 100;          // so many of them are given; the others lie beside them
  std::string companion = {};  // bytes of the first form's, form1.frx
};

// The forms stand in files form1.frm, form2.frm ... of a folder of their own; their names in
// mistakes have no folder. The module's controls are known.
RunResult RunForms(const RunRequest& request);

// A form file of `controls` (Begin ... End lines) and `code`; the code begins at line 10 plus the
// lines of `controls`.
std::string FormText(const std::string& controls, const std::string& code,
                     const std::string& name = "frmTest");

// A control's lines. `kindAndName` is "VB.TextBox txtOne"; `place`, from 0 to 6, is both how far
// down it lies and its TabIndex; `more` are further lines.
std::string Piece(const std::string& kindAndName, int place, const std::string& more = {});
std::string Edit(const std::string& name, int place, const std::string& more = {});  // QRNEdit
// The lines of a piece as high as three that holds others.
std::string Holder(const std::string& kindAndName, int place, const std::string& content);

// One form, what a user does before it, and what is printed.
struct FormCase {
  const char* name;
  std::string controls;
  std::string code;
  std::string script;
  std::string printed;
};

// Expects it to run as it says, without a failure, and to leave nothing behind.
void ExpectForm(const FormCase& given);

// Forms of which the first is loaded and shown, with nobody before it: for tests that look inside.
class OpenForms {
 public:
  OpenForms(const std::vector<std::string>& forms, bool design);
  OpenForms(const OpenForms&) = delete;
  OpenForms& operator=(const OpenForms&) = delete;
  ~OpenForms();

  host::Form& first() const;

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace qrn::tests
