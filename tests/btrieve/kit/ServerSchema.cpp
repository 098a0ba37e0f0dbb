#include "ServerSchema.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <thread>

#include "btrieve/server/ServerLayout.h"
#include "btrieve/server/ServerRanges.h"
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

void RequireRightRanges(const std::string& schema) {
  try {
    const uint64_t wrong = WrongRanges(OwnLink(), schema);
    if (wrong == 0) return;
    std::fprintf(stderr, "%u ranges of %s count wrong\n", static_cast<unsigned>(wrong),
                 schema.c_str());
    std::abort();
  } catch (const Failure& failure) {
    std::fprintf(stderr, "ranges of %s: %d\n", schema.c_str(), failure.status);
  }
}

}  // namespace

void MakeRangesSmall(ServerLink& link, const std::string& schema) {
  link.Run("CREATE OR REPLACE FUNCTION " + server::TableName(schema, "btrieve_range_size") +
           "() RETURNS int LANGUAGE sql IMMUTABLE AS 'SELECT 3'");
}

uint64_t WrongRanges(ServerLink& link, const std::string& schema) {
  const server::Rows names = link.Ask("SELECT name FROM " + server::FilesTable(schema));
  uint64_t wrong = 0;
  for (int row = 0; row < names.Count(); ++row) {
    const std::string table = TextOf(names.Bytes(row, 0));
    const server::ServerSpec spec = server::ReadServerSpec(link, schema, table);
    wrong += server::CountWrongRanges(link, {schema, table, spec.id}, spec.keyIds);
  }
  return wrong;
}

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
  MakeRangesSmall(OwnLink(), name_);
  std::ofstream(folder + "/file.ddf", std::ios::binary)
      << server::WriteLinkFile({TestServer(), name_, "file"});
}

// Who has just died may hold its tables for a moment.
ServerSchema::~ServerSchema() {
  RequireRightRanges(name_);
  for (int tries = 0; tries < 3; ++tries) {
    if (Drop(name_)) return;
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
  }
  std::fprintf(stderr, "the schema %s stays on the server\n", name_.c_str());
}

}  // namespace btrieve::test
