// A schema of the tests' server, which scripts/server.sh starts and names in QRN_SERVER, for the
// data files of one folder: what is created in the folder stands there. It goes with its object,
// which ends the program when the server has lost count of a file's ranges.
#pragma once

#include <string>

#include "btrieve/server/ServerLink.h"
#include "tests/support/Pinned.h"

namespace btrieve::test {

// Throws without such a server.
server::ServerAddress TestServer();

// From here on ranges in the schema hold few entries, so that small files have many.
void MakeRangesSmall(server::ServerLink& link, const std::string& schema);
// How many ranges of all files of the schema count otherwise than their tables do.
uint64_t WrongRanges(server::ServerLink& link, const std::string& schema);

class ServerSchema : qrn::test::Pinned {
 public:
  // Puts a link into the folder, which has a name that no other one has, in place of a dictionary.
  explicit ServerSchema(const std::string& folder);
  ~ServerSchema();

 private:
  std::string name_;
};

}  // namespace btrieve::test
