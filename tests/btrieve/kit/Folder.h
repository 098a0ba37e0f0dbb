// A folder for data files, removed at the end. With QRN_STORE=server what is created in it stands
// on the tests' server.
#pragma once

#include <cstdlib>
#include <optional>
#include <string_view>

#include "ServerSchema.h"
#include "tests/support/TempFolder.h"

namespace btrieve::test {

inline bool IsStoreOnServer() {
  const char* store = std::getenv("QRN_STORE");
  return store != nullptr && std::string_view(store) == "server";
}

class Folder : public qrn::test::TempFolder {
 public:
  explicit Folder(const std::filesystem::path& where = std::filesystem::temp_directory_path())
      : TempFolder(where) {
    if (IsStoreOnServer()) schema_.emplace(Text());
  }

 private:
  std::optional<ServerSchema> schema_;
};

}  // namespace btrieve::test
