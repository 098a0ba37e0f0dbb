// The code behind the form, in the designer's window.
#pragma once

#include <memory>
#include <string>

#include "host/designer/panes/Workplace.h"

namespace qrn::designer {

// Two lists, of objects and of their events; the code with its lines numbered and those marked that
// cannot run; below it the reason, and where the caret is. What is typed is in the design at once,
// unless the form's file cannot hold it.
class CodePane : public Pane {
 public:
  // Brings the caret into the handler of an object's event (both as CodePart lists them), which is
  // made if it is missing.
  virtual void Go(const std::string& object, const std::string& event) = 0;
  // To a line of the code, counted from 0.
  virtual void GoToLine(int line) = 0;
};

// `place` outlives the pane; `parent` sizes the pane's window.
std::unique_ptr<CodePane> MakeCodePane(Workplace& place, HWND parent);

}  // namespace qrn::designer
