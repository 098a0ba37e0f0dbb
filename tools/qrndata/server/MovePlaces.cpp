#include "tools/qrndata/server/MovePlaces.h"

#include <algorithm>
#include <fstream>

#include "btrieve/system/HostFile.h"
#include "tools/qrndata/BtrFile.h"
#include "tools/qrndata/DatabaseFiles.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/server/ServerAccess.h"

namespace qrndata {

namespace fs = std::filesystem;
namespace server = btrieve::server;

namespace {

[[noreturn]] void Fail(const fs::path& path) {
  throw Failure(kSystem, Say(Message::CannotBeWritten, PathToUtf8(path)));
}

bool IsThere(const fs::path& path) {
  std::error_code error;
  return fs::exists(fs::symlink_status(path, error));
}

void MakeFolderOf(const fs::path& path) {
  std::error_code error;
  fs::create_directories(path.parent_path(), error);
  if (error) Fail(path.parent_path());
}

// Where nothing may stand; on stable storage on return.
void Rename(const fs::path& from, const fs::path& to) {
  MakeFolderOf(to);
  const std::string target = WholePath(to), source = WholePath(from);
  Require(btrieve::PutAsNew(source, target), PathToUtf8(to));
  if (!btrieve::SyncFolderOf(target) || !btrieve::SyncFolderOf(source)) Fail(to);
}

void PutLink(const fs::path& path, const server::LinkFile& link) {
  fs::path aside = path;
  aside += ".link.part";
  std::ofstream file(aside, std::ios::binary);
  file << server::WriteLinkFile(link);
  file.close();
  if (!file || !btrieve::SyncFile(WholePath(aside), false)) Fail(path);
  Rename(aside, path);
}

// Only a link is taken away: another file is somebody's data.
void RemoveLink(const fs::path& path) {
  if (!IsThere(path)) return;
  if (!IsLink(path)) throw Failure(kSystem, Say(Message::PlaceTaken, PathToUtf8(path)));
  btrieve::RemoveFile(WholePath(path));
  if (IsThere(path)) Fail(path);
}

// The file from `from` in the place of its link; where it has been put already, nothing.
void Replace(const fs::path& from, const fs::path& to) {
  if (!IsThere(from)) {
    if (!IsThere(to) || IsLink(to))
      throw Failure(kSystem, Say(Message::FileLost, PathToUtf8(from)));
    return;
  }
  RemoveLink(to);
  Rename(from, to);
}

fs::path SourceOf(const fs::path& directory, const MovedFile& file) {
  return (file.isNew ? ReadyFiles(directory) : OldFiles(directory)) / file.name;
}

}  // namespace

void PutLinks(const fs::path& directory, const MoveRecord& move) {
  for (const MovedFile& file : move.files) {
    const fs::path path = directory / file.name;
    const fs::path old = OldFiles(directory) / file.name;
    if (!IsThere(old)) Rename(path, old);
    if (!IsThere(path)) PutLink(path, {move.place.server, move.place.schema, file.table});
  }
}

void PutOldFiles(const fs::path& directory, const MoveRecord& move) {
  for (const MovedFile& file : move.files) {
    const fs::path old = OldFiles(directory) / file.name;
    if (IsThere(old)) Replace(old, directory / file.name);
    fs::path aside = directory / file.name;
    aside += ".link.part";
    btrieve::RemoveFile(WholePath(aside));
  }
}

void PutReadyFiles(const fs::path& directory, const MoveRecord& move) {
  for (const MovedFile& file : move.files) {
    Replace(SourceOf(directory, file), directory / file.name);
  }
}

void DropUnused(const fs::path& directory) {
  std::error_code ignored;
  fs::remove_all(ReadyFiles(directory), ignored);
  fs::remove(UnfinishedRecord(directory), ignored);
  DropEmptyFolders(directory);
}

size_t DropEmptyFolders(const fs::path& directory) {
  const fs::path old = OldFiles(directory);
  std::error_code error;
  if (!fs::exists(old, error)) return 0;
  std::vector<fs::path> folders = {old};
  size_t files = 0;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(old, error)) {
    if (entry.is_directory(error)) folders.push_back(entry.path());
    files += entry.is_regular_file(error) ? 1 : 0;
  }
  std::ranges::sort(folders, std::ranges::greater());
  for (const fs::path& folder : folders)
    fs::remove(folder, error);  // refused where one is not empty
  return files;
}

}  // namespace qrndata
