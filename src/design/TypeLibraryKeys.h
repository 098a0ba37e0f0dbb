// The type library's keys of the registry, for the user's classes: the system registers libraries
// for the machine only, or in part.
#pragma once

#include <string>
#include <vector>

#include "ole/tables/Members.h"
#include "ole/tables/RegistryScript.h"

namespace qrn::design {

// What a registration script would hold for `library` in the file of that path: the library's own
// key, and one for each of its interfaces, by which calls between processes find their types.
std::vector<ole::RegistryKey> TypeLibraryKeys(const ole::LibraryTable& library,
                                              const std::u16string& path);

}  // namespace qrn::design
