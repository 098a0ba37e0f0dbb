// Files that come into a folder whose dictionary is on a server: each gets a table beside the
// dictionary's, and a link file where it was asked for.
#pragma once

#include <optional>
#include <string>

#include "btrieve/keys/KeySpec.h"
#include "btrieve/server/LinkFile.h"
#include "btrieve/server/ServerLink.h"

namespace btrieve::server {

// Null for a file that is no link, or cannot be read.
std::optional<LinkFile> LinkAt(const std::string& path);
// What the dictionary in a file's folder leads to (file.ddf), whatever the file.
std::optional<LinkFile> LinkBeside(const std::string& path);

// A file's or folder's name without what a name on a server cannot hold: small letters, digits, _.
std::string ServerNameOf(const std::string& path);
// For a file's table. Names that begin with btrieve_ are those of tables that are no files.
std::string TableNameOf(const std::string& path);

// An empty table for a file at `path` beside the one that `beside` leads to, under a name that
// nothing else there has; the link to it. Throws as ServerLink does.
LinkFile MakeLinkedTable(const LinkFile& beside, const std::string& path, const FileSpec& spec);
// Takes a table away that nobody has open: 25 if somebody has.
[[nodiscard]] Status DropLinkedTable(const LinkFile& link);
// An empty one in its place: 25 while somebody has it open.
[[nodiscard]] Status EmptyLinkedTable(const LinkFile& link, const FileSpec& spec);

}  // namespace btrieve::server
