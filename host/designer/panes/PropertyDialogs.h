// The system's dialogs for values that nobody types. Nothing where the user thought better of it.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>

#include "host/form/FormFile.h"
#include "host/form/Language.h"

namespace qrn::designer {

using form::Language;

// Colours are as in form files: a colour of the system's is shown, what is chosen is a mixed one.
std::optional<uint32_t> AskColour(HWND owner, uint32_t now);

// A font as the group of that name in form files; `now` is none for a font that was never set.
std::optional<form::Property> AskFont(HWND owner, const std::string& name,
                                      const std::optional<form::Property>& now);

// The path of a picture's file, UTF-8.
std::optional<std::string> AskPictureFile(HWND owner, Language language);

// True for bytes that the system makes a picture of.
bool IsPicture(const std::string& bytes);

}  // namespace qrn::designer
