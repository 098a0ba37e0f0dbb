#include "ServerSchema.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <thread>

#include "btrieve/server/ServerLayout.h"
#include "btrieve/system/Status.h"

namespace btrieve::test {
namespace {

using server::ServerLink;

// A connection beside the one that the files have.
ServerLink& OwnLink() {
  static std::shared_ptr<ServerLink> link;
  if (!link || !link->IsAlive()) {
    server::ServerAddress address = TestServer();
    address.words.emplace_back("sslmode", "disable");
    link = ServerLink::To(address);
  }
  return *link;
}

bool Drop(const std::string& schema) {
  try {
    OwnLink().Run("DROP SCHEMA \"" + schema + "\" CASCADE");
    return true;
  } catch (const Failure&) {
    return false;
  }
}

}  // namespace

server::ServerAddress TestServer() {
  server::ServerAddress address;
  const char* words = std::getenv("QRN_SERVER");
  if (words == nullptr || !server::ReadServerWords(words, address).empty()) {
    throw std::runtime_error("to be run by scripts/server.sh");
  }
  return address;
}

ServerSchema::ServerSchema(const std::string& folder)
    : name_("test_" + std::filesystem::path(folder).filename().string()) {
  server::MakeServerSchema(OwnLink(), name_);
  std::ofstream(folder + "/file.ddf", std::ios::binary)
      << server::WriteLinkFile({TestServer(), name_, "file"});
}

// Who has just died may hold its tables for a moment.
ServerSchema::~ServerSchema() {
  for (int tries = 0; tries < 3; ++tries) {
    if (Drop(name_)) return;
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
  }
  std::fprintf(stderr, "the schema %s stays on the server\n", name_.c_str());
}

}  // namespace btrieve::test
