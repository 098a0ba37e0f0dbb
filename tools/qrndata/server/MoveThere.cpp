// The way to the server: everything in one transaction, which the links then lead to.
#include <algorithm>
#include <fstream>

#include "btrieve/server/Transfer.h"
#include "tools/qrndata/DatabaseFiles.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Text.h"
#include "tools/qrndata/convert/OldFiles.h"
#include "tools/qrndata/server/MoveOnServer.h"
#include "tools/qrndata/server/MovePlaces.h"
#include "tools/qrndata/server/MoveWork.h"
#include "tools/qrndata/server/ServerAccess.h"
#include "tools/qrndata/server/TableNames.h"

namespace qrndata {

namespace fs = std::filesystem;
namespace server = btrieve::server;

namespace {

bool IsDataFile(const fs::path& path) {
  std::string start(btrieve::Storage::kStartSize, '\0');
  std::ifstream file(path, std::ios::binary);
  file.read(start.data(), static_cast<std::streamsize>(start.size()));
  return file && btrieve::Storage::IsDataFile(btrieve::ViewOf(start));
}

class MovingThere {
 public:
  MovingThere(const MoveOptions& options, const Streams& streams)
      : options_(options), streams_(streams) {
    move_.way = MoveRecord::Way::There;
    move_.mark = NewMark();
    move_.place.server = AddressOf(options.server, options.tlsRequired);
    move_.place.schema = options.schema.empty() ? SchemaNameOf(options.directory) : options.schema;
    if (!server::IsServerName(move_.place.schema)) {
      throw Failure(kUsage, Say(Message::SchemaNameBad, move_.place.schema));
    }
  }

  ExitCode Run() {
    ListFiles();
    RefuseOldFolder();
    link_ = Asking(Place(), [&] { return ConnectFor(move_.place.server); });
    for (const MovedFile& file : move_.files) {
      files_.push_back(HoldFile(options_.directory / file.name));
      records_ += files_.back()->Base().Counts().records;
    }
    const InterruptWatch interrupts;
    Move();
    Tell();
    return kDone;
  }

 private:
  std::string Place() const { return ServerName(move_.place); }

  void ListFiles();
  void AddFile(const fs::path& name);
  void RefuseOldFolder() const;
  uint64_t Work();
  void Move();
  void CopyAll(MoveProgress& progress);
  void CompareAll(MoveProgress& progress);
  void Switch(server::ServerTransaction& transaction);
  void Tell() const;

  const MoveOptions& options_;
  const Streams& streams_;
  MoveRecord move_;
  TableNames names_;
  std::shared_ptr<server::ServerLink> link_;
  SoleFiles files_;  // by place in move_.files
  uint64_t records_ = 0;
};

void MovingThere::AddFile(const fs::path& name) {
  const fs::path path = options_.directory / name;
  if (IsLink(path)) throw Failure(kSystem, Say(Message::IsOnAServer, PathToUtf8(path)));
  if (IsOldFile(path)) throw Failure(kSystem, Say(Message::ConvertFirst, PathToUtf8(path)));
  move_.files.push_back({name, names_.Take(name), false});
}

// The dictionary's, and whatever other data files stand beside it: programs that use those would
// find them on one station alone.
void MovingThere::ListFiles() {
  const Dictionary dictionary = ReadDictionary(options_.directory);
  std::error_code error;
  for (const fs::path& name : DatabaseFiles(dictionary, Message::FileOutsideMove)) {
    if (fs::exists(options_.directory / name, error)) {
      AddFile(name);
    } else {
      streams_.out << Say(Message::NoFileToMove, PathToUtf8(options_.directory / name)) << '\n';
    }
  }
  std::vector<fs::path> others;
  for (const fs::directory_entry& entry : fs::directory_iterator(options_.directory)) {
    const fs::path name = entry.path().filename();
    const bool isNew = std::ranges::find(move_.files, name, &MovedFile::name) == move_.files.end();
    if (isNew && entry.is_regular_file(error) && IsDataFile(entry.path())) others.push_back(name);
  }
  std::ranges::sort(others);
  for (const fs::path& name : others) AddFile(name);
}

void MovingThere::RefuseOldFolder() const {
  const fs::path old = OldFiles(options_.directory);
  std::error_code ignored;
  if (fs::exists(old, ignored) && !(fs::is_directory(old, ignored) && fs::is_empty(old, ignored))) {
    throw Failure(kSystem, Say(Message::OldFolderThere, PathToUtf8(old)));
  }
}

uint64_t MovingThere::Work() {
  uint64_t work = records_;
  for (const auto& file : files_) work += WorkOfComparison(file->Base());
  return work;
}

void MovingThere::CopyAll(MoveProgress& progress) {
  for (size_t at = 0; at < files_.size(); ++at) {
    const MovedFile& file = move_.files[at];
    Asking(PathToUtf8(file.name), [&] {
      server::CopyToServer(files_[at]->Base(), *link_, move_.place.schema, file.table,
                           progress.NextPart());
    });
  }
}

void MovingThere::CompareAll(MoveProgress& progress) {
  for (size_t at = 0; at < files_.size(); ++at) {
    const MovedFile& file = move_.files[at];
    Asking(PathToUtf8(file.name), [&] {
      const auto copy = OpenTable(move_.place, file.table);
      RequireAlike(files_[at]->Base(), *copy, PathToUtf8(file.name), progress.NextPart());
    });
  }
}

// What the transaction becomes decides, and that is asked for where its end is not known.
void MovingThere::Switch(server::ServerTransaction& transaction) {
  RestFiles(files_);
  std::error_code error;
  fs::create_directories(OldFiles(options_.directory), error);
  WriteMove(options_.directory, move_);
  PutLinks(options_.directory, move_);
  Asking(Place(), [&] { transaction.Commit(); });
  ForgetMove(options_.directory);
}

void MovingThere::Move() {
  try {
    MoveProgress progress(streams_, Say(Message::MovingTo, move_.place.schema), Work());
    auto transaction =
        Asking(Place(), [&] { return std::make_unique<server::ServerTransaction>(link_); });
    Asking(Place(), [&] {
      HoldMark(*link_, move_.mark);
      server::MakeServerSchema(*link_, move_.place.schema);
      if (!TablesOf(*link_, move_.place.schema).empty()) {
        throw Failure(kSystem, Say(Message::SchemaHasFiles, move_.place.schema));
      }
      LeaveMark(*link_, move_);
    });
    CopyAll(progress);
    CompareAll(progress);
    if (!options_.isDryRun) Switch(*transaction);
  } catch (const Failure&) {
    if (SettleMove(options_.directory, streams_) != Settled::Made) throw;
  }
}

void MovingThere::Tell() const {
  const std::string files = Counted(move_.files.size(), Message::Files);
  const std::string records = Counted(records_, Message::Records);
  streams_.out << PathToUtf8(options_.directory) << ": "
               << (options_.isDryRun ? Say(Message::CouldBeMoved, files, records, Place())
                                     : Say(Message::MovedThere, files, records, Place(),
                                           PathToUtf8(OldFiles(options_.directory))))
               << '\n';
}

}  // namespace

ExitCode MoveThere(const MoveOptions& options, const Streams& streams) {
  return MovingThere(options, streams).Run();
}

}  // namespace qrndata
