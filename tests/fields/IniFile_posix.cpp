#include <cstdlib>
#include <fstream>
#include <optional>

#include "IniFile.h"
#include "tests/support/TempFolder.h"

namespace qrn {
namespace {

// While there is an IniFile.
std::optional<test::TempFolder> folder;

void Append(const char* file, const std::string& text) {
  std::ofstream(folder->Path(file), std::ios::app) << text << '\n';
}

}  // namespace

IniFile::IniFile() {
  folder.emplace();
  setenv("QUORIN_INI_DIR", folder->Root().c_str(), 1);
  Append("quorin.ini", "[quorin350]");
  Append("win.ini", "[intl]");
}

IniFile::~IniFile() {
  unsetenv("QUORIN_INI_DIR");
  folder.reset();
}

void IniFile::Set(const char* key, const char* value) {
  Append("quorin.ini", std::string(key) + "=" + value);
}

void IniFile::SetSystemDate(const char* value) {
  Append("win.ini", std::string("sShortDate=") + value);
}

}  // namespace qrn
