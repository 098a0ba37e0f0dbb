// The views of a schema of files: where they stand, which ones are ours.
#pragma once

#include <string>
#include <vector>

#include "btrieve/server/ServerLink.h"

namespace qrndata {

// What ours have as their comment on the server.
inline constexpr char kOurView[] = "published by qrndata";

// The schema beside that of the files.
std::string ViewSchema(const std::string& schema);

// The first column of what a server has answered.
std::vector<std::string> TextsOf(const btrieve::server::Rows& rows);

// Names in quotes of our views in a schema of views. Throws btrieve::Failure, as Unpublish.
std::vector<std::string> OurViews(btrieve::server::ServerLink& link, const std::string& viewSchema);

// Takes away what was published of a schema of files, within the transaction that is open: 2 where
// something of others' needs a view. Functions that others need stay, as does whatever is theirs.
void Unpublish(btrieve::server::ServerLink& link, const std::string& schema);

}  // namespace qrndata
