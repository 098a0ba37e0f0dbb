// A form from a dictionary, asked for page by page.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "host/form/Language.h"

namespace qrn::designer {

struct WizardOutcome {
  std::string file;                   // of the form that was made, whole, UTF-8
  std::vector<std::string> messages;  // what the user has been told of it
};

// Shows the wizard before `owner` until it is finished or left; nothing is written before it is
// finished, and nothing comes back where it is left. The thread has entered a single-threaded
// apartment with OleInitialize.
std::optional<WizardOutcome> RunFormWizard(HWND owner, form::Language language);

}  // namespace qrn::designer
