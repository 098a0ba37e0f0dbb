// A data file's records on their way to a server, and back: positions, versions and the order of
// duplicates stay as they are.
#pragma once

#include <string>

#include "btrieve/server/ServerLayout.h"
#include "btrieve/storage/Comparison.h"

namespace btrieve::server {

// Makes the table and fills it, as part of the server's transaction that the caller has begun.
// `file` is open and read; what is being written to it comes along as of the state it reads.
// Throws as ServerLink does; 59 where the schema has the table.
void CopyToServer(Storage& file, ServerLink& link, const std::string& schema,
                  const std::string& table, const WorkWatch& watch = {});

// Makes a data file at `path`, where none is, with what `file` holds, and closes it: whole, without
// a log, on stable storage. `file` stays as it is meanwhile. Throws as ServerLink and Storage do;
// what is made by half is the caller's to remove.
void CopyToFile(Storage& file, const std::string& path, const WorkWatch& watch = {});

}  // namespace btrieve::server
