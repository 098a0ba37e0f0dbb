// A schema of the tests' server, which scripts/server.sh starts and names in QRN_SERVER, for the
// data files of one folder: what is created in the folder stands there. It goes with its object.
#pragma once

#include <string>

#include "btrieve/server/LinkFile.h"
#include "tests/support/Pinned.h"

namespace btrieve::test {

// Throws without such a server.
server::ServerAddress TestServer();

class ServerSchema : qrn::test::Pinned {
 public:
  // Puts a link into the folder, which has a name that no other one has, in place of a dictionary.
  explicit ServerSchema(const std::string& folder);
  ~ServerSchema();

 private:
  std::string name_;
};

}  // namespace btrieve::test
