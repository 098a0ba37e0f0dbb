#include "tests/support/TempFolder.h"

#include <cstdio>
#include <cstdlib>
#include <random>

namespace qrn::test {
namespace {

// At most eight characters: of siblings with longer names Wine's short names are alike.
std::string AnyName() {
  std::string name = "q";
  for (unsigned value = std::random_device()(); name.size() < 8; value /= 26) {
    name += static_cast<char>('a' + value % 26);
  }
  return name;
}

// What stays behind is told at once, and counts when the program ends.
struct Leftovers {
  bool any = false;
  ~Leftovers() {
    if (any) std::_Exit(1);
  }
};
Leftovers leftovers;

}  // namespace

TempFolder::TempFolder(const std::filesystem::path& where) {
  do {
    root_ = where / AnyName();
  } while (!std::filesystem::create_directory(root_));
  text_ = root_.string();
}

TempFolder::~TempFolder() {
  std::error_code failed;
  std::filesystem::remove_all(root_, failed);
  if (!failed) return;
  std::fprintf(stderr, "error: %s stays behind: %s\n", text_.c_str(), failed.message().c_str());
  leftovers.any = true;
}

}  // namespace qrn::test
