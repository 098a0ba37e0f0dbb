// A new folder, removed with what is in it at the end. A folder that cannot be removed ends the
// program with a fault: something in it was not closed, and its name would meet a later one's.
#pragma once

#include <filesystem>
#include <string>

#include "tests/support/Pinned.h"

namespace qrn::test {

class TempFolder : Pinned {
 public:
  explicit TempFolder(const std::filesystem::path& where = std::filesystem::temp_directory_path());
  ~TempFolder();

  const std::filesystem::path& Root() const { return root_; }
  const std::string& Text() const { return text_; }
  // Of something in it.
  std::string Path(const std::string& name) const { return (root_ / name).string(); }

 private:
  std::filesystem::path root_;
  std::string text_;
};

}  // namespace qrn::test
