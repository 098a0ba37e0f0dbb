// Forms as Visual Basic writes them and as people leave them, to open in the designer.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/designer/model/Design.h"
#include "host/designer/model/FurnitureInfo.h"

namespace qrn::test {

struct FormCase {
  const char* what;
  std::string bytes;      // of the .frm
  std::string companion;  // of the .frx, empty if there is none
};

// Menus, MDI forms, nested containers, arrays, long texts, other line ends, half-known lines.
const std::vector<FormCase>& FormCases();

// The forms that the repository holds, by their paths.
std::vector<std::string> RepositoryForms();

// UTF-8 with LF as a Japanese Visual Basic writes it: code page 932 with CR LF.
std::string VbBytes(const std::string& utf8);

// The furniture and two controls of a module: LIB.Box, bound to a dictionary, and LIB.Source, which
// shows nothing.
class TestClasses final : public designer::FurnitureClasses {
 public:
  TestClasses();
  const designer::ClassInfo* Find(std::string_view library, std::string_view name) const override;
  std::optional<form::LibraryReference> Library(std::string_view library) const override;

 private:
  std::vector<designer::ClassInfo> classes_;
};
const TestClasses& Classes();

// A design of a form's bytes; throws std::runtime_error with the mistakes if it is none.
std::unique_ptr<designer::Design> Designed(const std::string& bytes,
                                           const std::string& companion = {});

// `Begin` and `End` round lines at the depth of a form: the shortest way to a form with these
// lines.
std::string FormWith(const std::string& utf8Lines, const std::string& utf8Code = {});

// What was refused; kCount if nothing was.
inline designer::TextId RefusalOf(const designer::Refusal& refusal) {
  return refusal ? refusal->text : designer::TextId::kCount;
}

// The id of the control of that name (and index, "cmd(1)").
designer::ControlId IdOf(const designer::Design& design, const std::string& name);

// The controls as "A B(C D) E", as they lie in one another, front to back.
std::string Tree(const designer::Design& design);

// The lines of the control's block as UTF-8, trimmed, runs of blanks as one, joined by "|", without
// inner controls.
std::string Lines(const designer::Design& design, const std::string& name);
// Of the control's line of that property what stands behind the "=", so too; empty: it has none.
std::string LineValue(const designer::Design& design, const std::string& name,
                      const std::string& property);

}  // namespace qrn::test
