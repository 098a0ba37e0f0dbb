// What the registry holds, as text that compares.
#pragma once

#include <windows.h>

#include <map>
#include <string>

namespace qrn::test {

// Values of a key and of all below it: "path\name" (the default value's name is empty) to the
// value's type and data. A key without values stands as its path alone.
using RegistryDump = std::map<std::wstring, std::wstring>;

RegistryDump Dump(HKEY root, const std::wstring& path);

// The classes of the machine and of the user.
RegistryDump DumpClasses();

// The lines of `now` that `before` has not or has otherwise, and those that went, one a line.
std::string Difference(const RegistryDump& before, const RegistryDump& now);

}  // namespace qrn::test
