// The door of the reader, and what holds for a form as a whole: names are names and stand once.
#include "host/form/FormFile.h"

#include <map>

#include "host/form/FormReader.h"
#include "host/form/SourceText.h"

namespace qrn::form {
namespace {

struct Named {
  int line;
  bool inArray;
};

// Names of controls by lower case; elements of an array by name and index.
class NameCheck {
 public:
  explicit NameCheck(Mistakes& mistakes) : mistakes_(mistakes) {}

  void Walk(const ControlNode& control) {
    Check(control);
    for (const ControlNode& child : control.children) Walk(child);
  }

 private:
  void Check(const ControlNode& control) {
    const bool inArray = control.index >= 0;
    const std::string key = LowerWord(control.name);
    const auto [first, isNew] = names_.try_emplace(key, Named{control.line, inArray});
    if (!isNew && !(inArray && first->second.inArray)) return Complain(control, first->second);
    if (!inArray) return;
    const std::string element = key + "(" + std::to_string(control.index) + ")";
    const auto [twin, isNewElement] = names_.try_emplace(element, Named{control.line, true});
    if (!isNewElement) Complain(control, twin->second);
  }

  void Complain(const ControlNode& control, const Named& first) {
    mistakes_.Add(control.line, "the name " + control.name + " stands already on line " +
                                    std::to_string(first.line));
  }

  Mistakes& mistakes_;
  std::map<std::string, Named> names_;
};

}  // namespace

const Property* ControlNode::Find(std::string_view propertyName) const noexcept {
  for (const Property& property : properties) {
    if (SameWord(property.name, propertyName)) return &property;
  }
  return nullptr;
}

bool ControlNode::Is(std::string_view libraryName, std::string_view name_) const noexcept {
  return SameWord(library, libraryName) && SameWord(className, name_);
}

std::string FormFile::Name() const {
  for (const Property& attribute : attributes) {
    if (!SameWord(attribute.name, "VB_Name")) continue;
    if (const std::string* text = std::get_if<std::string>(&attribute.value)) return *text;
  }
  return form.name;
}

FormFile ReadFormFile(std::string_view fileBytes, Mistakes& mistakes) {
  FormFile file = FormReader(SourceLines(fileBytes), mistakes).Read();
  if (!file.form.name.empty()) NameCheck(mistakes).Walk(file.form);
  return file;
}

}  // namespace qrn::form
