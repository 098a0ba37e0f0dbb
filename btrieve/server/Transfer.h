// A data file's records on their way to a server: positions, versions and the order of duplicates
// stay as they are.
#pragma once

#include <string>

#include "btrieve/server/ServerLayout.h"
#include "btrieve/storage/Storage.h"

namespace btrieve::server {

// Makes the table and fills it, as part of the server's transaction that the caller has begun.
// `file` is open and read; what is being written to it comes along as of the state it reads.
// Throws as ServerLink does; 59 where the schema has the table.
void CopyToServer(Storage& file, ServerLink& link, const std::string& schema,
                  const std::string& table);

}  // namespace btrieve::server
