// A copy of files on a server as local ones.
#pragma once

#include <filesystem>
#include <vector>

#include "tools/qrndata/Program.h"

namespace qrndata {

// Makes data files in `target` of those `names` of the directory that are links, all in the state
// of one moment of the server's; takes these names out. Nobody is kept from working. Throws Failure
// (kSystem), also where the links lead to several servers.
void CopyLinked(const std::filesystem::path& directory, std::vector<std::filesystem::path>& names,
                const std::filesystem::path& target, const Streams& streams);

}  // namespace qrndata
