// The designer as qrnform shows it, with a script's user before it, and what it left on the disk.
#pragma once

#include <string>

#include "tests/support/TempFolder.h"

namespace qrn::tests {

// A folder with a form's file in it, worked on by scripts one after the other.
class DesignerRun {
 public:
  // `bytes` of form.frm; empty: there is no file yet.
  explicit DesignerRun(const std::string& bytes = {});

  // The script with `@` in its texts standing for the folder and a backslash. Opens form.frm or, if
  // there is none, a new form. What failed; empty if nothing did.
  std::string Play(const std::string& script);
  // What code and script printed in the last run, UTF-8.
  const std::string& printed() const noexcept { return printed_; }

  std::string PathOf(const std::string& name) const { return folder_.Path(name); }
  bool Has(const std::string& name) const;
  // Empty if there is no such file.
  std::string Bytes(const std::string& name = "form.frm") const;

 private:
  test::TempFolder folder_;
  std::string printed_;
};

}  // namespace qrn::tests
