#include "btrieve/system/StationName.h"

#include <algorithm>

namespace btrieve {
namespace {

constexpr size_t kLongestMachine = 20, kLongestProgram = 24;

// Empty names would shift the others.
std::string Plain(std::string name, size_t longest, bool mayHaveBlanks) {
  name.resize(std::min(name.size(), longest));
  for (char& c : name) {
    const bool isPlain = c > ' ' && c <= '~';
    if (!isPlain && !(c == ' ' && mayHaveBlanks)) c = '?';
  }
  return name.empty() ? "?" : name;
}

}  // namespace

std::string StationName() {
  return "w64btrv " + Plain(MachineName(), kLongestMachine, false) + " " +
         Plain(ProgramName(), kLongestProgram, true) + " " + std::to_string(ProcessNumber());
}

}  // namespace btrieve
