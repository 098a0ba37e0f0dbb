#include <windows.h>

#include <array>

#include "btrieve/system/StationName.h"

namespace btrieve {
namespace {

// Only what is plain counts.
std::string Narrow(const wchar_t* wide, size_t length) {
  std::string text;
  for (size_t at = 0; at < length; ++at) {
    text.push_back(wide[at] < 0x80 ? static_cast<char>(wide[at]) : '?');
  }
  return text;
}

}  // namespace

std::string MachineName() {
  std::array<wchar_t, 256> name{};
  auto length = static_cast<DWORD>(name.size());
  return GetComputerNameW(name.data(), &length) ? Narrow(name.data(), length) : "";
}

std::string ProgramName() {
  std::array<wchar_t, 4096> path{};
  const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  const std::string whole = Narrow(path.data(), length);
  return whole.substr(whole.find_last_of("\\/") + 1);
}

unsigned long ProcessNumber() noexcept { return GetCurrentProcessId(); }

}  // namespace btrieve
