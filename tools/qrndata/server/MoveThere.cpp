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
#include "tools/qrndata/server/OwnSchema.h"
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

class MovingThere : Moving {
 public:
  MovingThere(const MoveOptions& given, const Streams& told)
      : Moving(given, told, MoveRecord::Way::There) {
    move.place.server = AddressOf(options.server, options.tlsRequired);
    move.place.schema = options.schema.empty() ? SchemaNameOf(options.directory) : options.schema;
    if (!server::IsServerName(move.place.schema)) {
      throw Failure(kUsage, Say(Message::SchemaNameBad, move.place.schema));
    }
    if (IsServersOwn(move.place.schema)) {
      throw Failure(kUsage, Say(Message::SchemaIsServers, move.place.schema));
    }
  }

  ExitCode Run() {
    ListFiles();
    RefuseOldFolder();
    Connect();
    for (const MovedFile& file : move.files) {
      files.push_back(HoldFile(options.directory / file.name));
      records += files.back()->Base().Counts().records;
    }
    const InterruptWatch interrupts;
    Move();
    Tell();
    return kDone;
  }

 private:
  void ListFiles();
  void AddFile(const fs::path& name);
  void RefuseOldFolder() const;
  void RefuseKeptTables();
  uint64_t Work();
  void Move();
  void CopyAll(MoveProgress& progress);
  void CompareAll(MoveProgress& progress);
  void Switch(server::ServerTransaction& transaction);
  void Tell() const;

  TableNames names_;
};

void MovingThere::AddFile(const fs::path& name) {
  const fs::path path = options.directory / name;
  if (IsLink(path)) throw Failure(kSystem, Say(Message::IsOnAServer, PathToUtf8(path)));
  if (IsOldFile(path)) throw Failure(kSystem, Say(Message::ConvertFirst, PathToUtf8(path)));
  move.files.push_back({name, names_.Take(name), false});
}

// The dictionary's, and whatever other data files stand beside it: programs that use those would
// find them on one station alone.
void MovingThere::ListFiles() {
  const Dictionary dictionary = ReadDictionary(options.directory);
  std::error_code error;
  for (const fs::path& name : DatabaseFiles(dictionary, Message::FileOutsideMove)) {
    if (fs::exists(options.directory / name, error)) {
      AddFile(name);
    } else {
      streams.out << Say(Message::NoFileToMove, PathToUtf8(options.directory / name)) << '\n';
    }
  }
  std::vector<fs::path> others;
  for (const fs::directory_entry& entry : fs::directory_iterator(options.directory)) {
    const fs::path name = entry.path().filename();
    const bool isNew = std::ranges::find(move.files, name, &MovedFile::name) == move.files.end();
    if (isNew && entry.is_regular_file(error) && IsDataFile(entry.path())) others.push_back(name);
  }
  std::ranges::sort(others);
  for (const fs::path& name : others) AddFile(name);
}

void MovingThere::RefuseOldFolder() const {
  const fs::path old = OldFiles(options.directory);
  std::error_code ignored;
  if (fs::exists(old, ignored) && !(fs::is_directory(old, ignored) && fs::is_empty(old, ignored))) {
    throw Failure(kSystem, Say(Message::OldFolderThere, PathToUtf8(old)));
  }
}

// Whoever reads a kept table would take it for the file that has a table beside it from now on.
void MovingThere::RefuseKeptTables() {
  std::string inTheWay;
  for (const std::string& table : KeptTables(*link, move.place.schema)) {
    const bool isWanted =
        std::ranges::find(move.files, table, &MovedFile::table) != move.files.end();
    if (isWanted) inTheWay += (inTheWay.empty() ? "" : ", ") + table;
  }
  if (!inTheWay.empty()) {
    throw Failure(kSystem, Say(Message::SchemaHasKept, move.place.schema, inTheWay));
  }
}

uint64_t MovingThere::Work() {
  uint64_t work = records;
  for (const auto& file : files) work += WorkOfComparison(file->Base());
  return work;
}

void MovingThere::CopyAll(MoveProgress& progress) {
  for (size_t at = 0; at < files.size(); ++at) {
    MovedFile& file = move.files[at];
    Asking(PathToUtf8(file.name), [&] {
      while (IsNameTaken(*link, move.place.schema, file.table)) file.table = names_.Take(file.name);
      server::CopyToServer(files[at]->Base(), *link, move.place.schema, file.table,
                           progress.NextPart());
    });
  }
}

void MovingThere::CompareAll(MoveProgress& progress) {
  for (size_t at = 0; at < files.size(); ++at) {
    const MovedFile& file = move.files[at];
    Asking(PathToUtf8(file.name), [&] {
      const auto copy = OpenTable(move.place, file.table);
      RequireAlike(files[at]->Base(), *copy, PathToUtf8(file.name), progress.NextPart());
    });
  }
}

// What the transaction becomes decides, and that is asked for where its end is not known.
void MovingThere::Switch(server::ServerTransaction& transaction) {
  RestFiles(files);
  std::error_code error;
  fs::create_directories(OldFiles(options.directory), error);
  WriteMove(options.directory, move);
  PutLinks(options.directory, move);
  Asking(Place(), [&] { transaction.Commit(); });
  ForgetMove(options.directory);
}

void MovingThere::Move() {
  try {
    MoveProgress progress(streams, Say(Message::MovingTo, move.place.schema), Work());
    auto transaction =
        Asking(Place(), [&] { return std::make_unique<server::ServerTransaction>(link); });
    Asking(Place(), [&] {
      HoldMark(*link, move.mark);
      MakeOwnSchema(*link, move.place.schema);
      server::MakeServerSchema(*link, move.place.schema);
      if (!TablesOf(*link, move.place.schema).empty()) {
        throw Failure(kSystem, Say(Message::SchemaHasFiles, move.place.schema));
      }
      RefuseKeptTables();
      LeaveMark(*link, move);
    });
    CopyAll(progress);
    CompareAll(progress);
    if (!options.isDryRun) Switch(*transaction);
  } catch (const Failure&) {
    if (SettleMove(options.directory, streams) != Settled::Made) throw;
  }
}

void MovingThere::Tell() const {
  const std::string moved = Counted(move.files.size(), Message::Files);
  const std::string inThem = Counted(records, Message::Records);
  streams.out << PathToUtf8(options.directory) << ": "
              << (options.isDryRun ? Say(Message::CouldBeMoved, moved, inThem, Place())
                                   : Say(Message::MovedThere, moved, inThem, Place(),
                                         PathToUtf8(OldFiles(options.directory))))
              << '\n';
}

}  // namespace

ExitCode MoveThere(const MoveOptions& options, const Streams& streams) {
  return MovingThere(options, streams).Run();
}

}  // namespace qrndata
