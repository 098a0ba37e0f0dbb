// Runs registration scripts, and runs them in reverse.
//
// A script's HKCR is the key given as `classes`, so that one script serves the machine's hive and
// the user's. The other roots are the system's.
#pragma once

#include <windows.h>

#include <vector>

#include "ole/tables/RegistryScript.h"

namespace qrn::ole {

class Registrar {
 public:
  // `classes` is the caller's, open for writing as long as this lives.
  explicit Registrar(HKEY classes) noexcept : classes_(classes) {}

  // Makes keys and values in the script's order. A system error code; what was made before it
  // stays.
  [[nodiscard]] LSTATUS Add(const std::vector<RegistryKey>& roots) const;

  // Takes away what Add makes, from the leaves up: a key marked ForceRemove with all below it, a
  // plain one unless others have put keys below it; of a NoRemove key only the values that the
  // script names. What is not there is no error. Goes on after an error and gives the first.
  [[nodiscard]] LSTATUS Remove(const std::vector<RegistryKey>& roots) const;

 private:
  HKEY Root(const RegistryKey& key) const noexcept;

  HKEY classes_;
};

}  // namespace qrn::ole
