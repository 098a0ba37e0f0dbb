// The files of a folder on their way to and from the places that a move gives them. Each of these
// may have been stopped anywhere before, by itself or by another one's death, and is then carried
// on. All throw Failure (kSystem) where the system refuses.
#pragma once

#include "tools/qrndata/server/MoveRecord.h"

namespace qrndata {

// There: data files to the folder for old ones, links in their places; and that undone.
void PutLinks(const std::filesystem::path& directory, const MoveRecord& move);
void PutOldFiles(const std::filesystem::path& directory, const MoveRecord& move);

// Back: the files that are ready in the places of links.
void PutReadyFiles(const std::filesystem::path& directory, const MoveRecord& move);
// What was only made ready, for a move that is not made: files, a record that was not whole.
void DropUnused(const std::filesystem::path& directory);

// The folder for old files, and those below it, as far as nothing is in them. The number of files
// that are.
size_t DropEmptyFolders(const std::filesystem::path& directory);

}  // namespace qrndata
