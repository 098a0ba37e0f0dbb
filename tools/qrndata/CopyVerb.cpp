// `copy`: a dictionary and all its data files in one consistent state, as a backup.
#include <algorithm>

#include "btrieve/session/CopyFiles.h"
#include "btrieve/system/HostFile.h"
#include "tools/qrndata/BtrFile.h"
#include "tools/qrndata/DatabaseFiles.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Progress.h"
#include "tools/qrndata/Verbs.h"
#include "tools/qrndata/server/LinkedCopy.h"

namespace qrndata {

namespace {

namespace fs = std::filesystem;

// A folder that takes its place only when it is whole.
class NewFolder {
 public:
  explicit NewFolder(const fs::path& path) : path_(path) {
    std::error_code error;
    if (fs::exists(path, error) && !(fs::is_directory(path, error) && fs::is_empty(path, error))) {
      throw Failure(kSystem, Say(Message::CopyIntoNewFolder, PathToUtf8(path)));
    }
    if (!path.has_filename()) path_ = path.parent_path();
    for (int number = 1; side_.empty() || fs::exists(side_, error); ++number) {
      side_ = path_;
      side_ += "." + std::to_string(number) + ".part";
    }
    if (!fs::create_directories(side_, error) || error) Fail();
  }
  NewFolder(const NewFolder&) = delete;
  NewFolder& operator=(const NewFolder&) = delete;
  ~NewFolder() {
    std::error_code ignored;
    if (!side_.empty()) fs::remove_all(side_, ignored);
  }

  const fs::path& Side() const noexcept { return side_; }

  void Finish() {
    std::error_code error;
    fs::remove(path_, error);
    fs::rename(side_, path_, error);
    if (error) Fail();
    side_.clear();
    if (!btrieve::SyncFolderOf(BtrievePath(fs::absolute(path_)))) Fail();
  }

 private:
  [[noreturn]] void Fail() const {
    throw Failure(kSystem, Say(Message::CannotBeWritten, PathToUtf8(path_)));
  }

  fs::path path_, side_;
};

}  // namespace

ExitCode RunCopy(const CopyOptions& options, const Streams& streams) {
  const Dictionary dictionary = ReadDictionary(options.directory);
  std::vector<fs::path> names = DatabaseFiles(dictionary, Message::FileOutside);
  const size_t files = names.size();
  NewFolder folder(options.target);
  CopyLinked(options.directory, names, folder.Side(), streams);
  std::vector<btrieve::FileCopy> copies;
  for (const fs::path& name : names) {
    const fs::path target = folder.Side() / name;
    std::error_code ignored;
    fs::create_directories(target.parent_path(), ignored);
    copies.push_back({WholePath(options.directory / name), WholePath(target)});
  }
  size_t at = 0;
  const Status status = btrieve::CopyFiles(copies, std::chrono::seconds(options.patience), at);
  if (status != btrieve::kOk) {
    throw Failure(kSystem,
                  Say(Message::NothingCopied,
                      PathToUtf8(options.directory / names[std::min(at, names.size() - 1)]),
                      StatusText(status)));
  }
  folder.Finish();
  streams.out << PathToUtf8(options.target) << ": "
              << Counted(dictionary.tables.size(), Message::Tables) << ", "
              << Counted(files, Message::Files) << '\n';
  return kDone;
}

}  // namespace qrndata
