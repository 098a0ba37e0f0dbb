#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "IniFile.h"

namespace qrn {
namespace {

namespace fs = std::filesystem;

fs::path Directory() { return fs::temp_directory_path() / "qrn-settings-test"; }

void Append(const char* file, const std::string& text) {
  std::ofstream(Directory() / file, std::ios::app) << text << '\n';
}

}  // namespace

IniFile::IniFile() {
  fs::create_directories(Directory());
  setenv("QUORIN_INI_DIR", Directory().c_str(), 1);
  Append("quorin.ini", "[quorin350]");
  Append("win.ini", "[intl]");
}

IniFile::~IniFile() {
  unsetenv("QUORIN_INI_DIR");
  fs::remove_all(Directory());
}

void IniFile::Set(const char* key, const char* value) {
  Append("quorin.ini", std::string(key) + "=" + value);
}

void IniFile::SetSystemDate(const char* value) {
  Append("win.ini", std::string("sShortDate=") + value);
}

}  // namespace qrn
