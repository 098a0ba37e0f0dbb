// The server's part of a move: what tells that it was made, who else is there, what goes at its
// end. All within the server's transaction that the move is; they throw btrieve::Failure.
#pragma once

#include <string>
#include <vector>

#include "btrieve/server/ServerLink.h"
#include "tools/qrndata/server/MoveRecord.h"

namespace qrndata {

// Held until the transaction's end: who looks whether the move was made waits for it. 85 while
// another move's holder is still at its end.
void HoldMark(btrieve::server::ServerLink& link, const std::string& mark);

// There: leaves the mark with the schema's table of files.
void LeaveMark(btrieve::server::ServerLink& link, const MoveRecord& move);

// Whether the move's transaction has committed; waits while that is being done.
bool WasMade(btrieve::server::ServerLink& link, const MoveRecord& move);

// A file's table and the number that the server has for it, which names its locks.
struct ServerTable {
  std::string name;
  int64_t id = 0;      // in the table of files
  int64_t number = 0;  // as the server has it
};
// The schema's files by name; none where it has no table of files.
std::vector<ServerTable> TablesOf(btrieve::server::ServerLink& link, const std::string& schema);
// The server's number of a table; 0 without one.
int64_t RelationNumber(btrieve::server::ServerLink& link, const std::string& schema,
                       const std::string& table);
// Whether a table cannot have the name in the schema: an index, a type or whatever else has it.
bool IsNameTaken(btrieve::server::ServerLink& link, const std::string& schema,
                 const std::string& name);
// Tables that look as those of files do, but are nobody's: what --keep has left.
std::vector<std::string> KeptTables(btrieve::server::ServerLink& link, const std::string& schema);
// Of the schema's table of files.
int64_t FilesTableOf(btrieve::server::ServerLink& link, const std::string& schema);

// Keeps every other station from opening the files. The stations that have one open, which makes
// it fail: "machine program pid" each, as they have told the server.
std::vector<std::string> HoldTables(btrieve::server::ServerLink& link, const std::string& schema,
                                    const std::vector<ServerTable>& tables);

// Back: the files are none any more; their tables go, unless they are kept, and with the last one
// what else the schema has of ours. What others have put there stays, and the schema with it.
void GiveUpTables(btrieve::server::ServerLink& link, const std::string& schema,
                  const std::vector<ServerTable>& tables, bool keep);

}  // namespace qrndata
