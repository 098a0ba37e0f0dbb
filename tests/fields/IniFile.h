// The settings files of a test, where the system looks for them.
#pragma once

#include "tests/support/Pinned.h"

namespace qrn {

// For the life of the object there is no other quorin.ini, and no short date in win.ini.
class IniFile : test::Pinned {
 public:
  IniFile();
  ~IniFile();

  // A key of section quorin350.
  void Set(const char* key, const char* value);
  // sShortDate of section intl in win.ini.
  void SetSystemDate(const char* value);
};

}  // namespace qrn
