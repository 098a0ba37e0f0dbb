// The system's dialogs for a form's file.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "host/form/Language.h"

namespace qrn::designer {

// The whole path, UTF-8; nothing if the user does not want to. The current folder stays.
std::optional<std::string> AskFormToOpen(HWND owner, form::Language language);
// `path` is what is offered. A file that stands is asked about.
std::optional<std::string> AskWhereToSave(HWND owner, form::Language language,
                                          const std::string& path);

}  // namespace qrn::designer
