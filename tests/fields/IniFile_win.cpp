#include <windows.h>

#include "IniFile.h"

namespace qrn {
namespace {

constexpr char kSection[] = "quorin350";
constexpr char kFile[] = "quorin.ini";

// A null key empties the section, a null value the key.
void Write(const char* key, const char* value) {
  WritePrivateProfileStringA(kSection, key, value, kFile);
}

}  // namespace

IniFile::IniFile() {
  Write(nullptr, nullptr);
  WritePrivateProfileStringA("intl", "sShortDate", nullptr, "win.ini");
}

IniFile::~IniFile() {
  Write(nullptr, nullptr);
  WritePrivateProfileStringA("intl", "sShortDate", nullptr, "win.ini");
}

void IniFile::Set(const char* key, const char* value) { Write(key, value); }

void IniFile::SetSystemDate(const char* value) {
  WritePrivateProfileStringA("intl", "sShortDate", value, "win.ini");
}

}  // namespace qrn
