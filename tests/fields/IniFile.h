// The settings files of a test, where the system looks for them.
#pragma once

namespace qrn {

// For the life of the object there is no other quorin.ini, and no short date in win.ini.
class IniFile {
 public:
  IniFile();
  ~IniFile();
  IniFile(const IniFile&) = delete;
  IniFile& operator=(const IniFile&) = delete;

  // A key of section quorin350.
  void Set(const char* key, const char* value);
  // sShortDate of section intl in win.ini.
  void SetSystemDate(const char* value);
};

}  // namespace qrn
