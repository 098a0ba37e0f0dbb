// Texts on their way between the runner (UTF-8) and the system (UTF-16).
#pragma once

#include <oaidl.h>
#include <windows.h>

#include <string>
#include <string_view>

#include "com/Text.h"

namespace qrn::host {

using com::Utf8;
using com::Wide;

inline com::Bstr MakeBstr(std::string_view utf8) { return com::Bstr(Wide(utf8)); }

// Equal but for case, as names of members and controls are compared.
bool SameName(std::wstring_view left, std::wstring_view right) noexcept;

// A value as Visual Basic would print it: True, False, Null as "Null", Empty and an object that
// has no value as "". Numbers have a point whatever the locale.
std::wstring ValueAsText(const VARIANT& value);

}  // namespace qrn::host
