// Schemas that this program makes on a server, and drops again. They bear a mark; one that was
// there before, `public` for one, has none and stays. What else stands in a schema, of whatever
// kind, only the server knows whole: so ours is dropped by name, and the schema without what hangs
// on it, which the server refuses while anything is left.
#pragma once

#include <string>

#include "btrieve/server/ServerLink.h"

namespace qrndata {

// All within a transaction that is open; they throw btrieve::Failure.

// Makes the schema, with the mark, where there is none of that name.
void MakeOwnSchema(btrieve::server::ServerLink& link, const std::string& schema);
// Drops it where it bears the mark and nothing stands in it.
void DropOwnSchema(btrieve::server::ServerLink& link, const std::string& schema);

// Whether the server has carried statements out; refused ones leave the transaction as it was.
bool TryToRun(btrieve::server::ServerLink& link, const std::string& sql);

// Of the server's own schemas, in which nobody else is to make anything.
bool IsServersOwn(const std::string& schema) noexcept;

}  // namespace qrndata
