// The way back: files made ready first, then the server gives its tables up, then each file takes
// its link's place.
#include <algorithm>

#include "btrieve/server/Transfer.h"
#include "tools/qrndata/DatabaseFiles.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/server/MoveOnServer.h"
#include "tools/qrndata/server/MovePlaces.h"
#include "tools/qrndata/server/MoveWork.h"
#include "tools/qrndata/server/ServerAccess.h"

namespace qrndata {

namespace fs = std::filesystem;
namespace server = btrieve::server;
using btrieve::Storage;

namespace {

std::string Joined(const std::vector<std::string>& words) {
  std::string all;
  for (const std::string& word : words) all += (all.empty() ? "" : ", ") + word;
  return all;
}

class MovingBack : Moving {
 public:
  MovingBack(const MoveOptions& given, const Streams& told)
      : Moving(given, told, MoveRecord::Way::Back) {}

  ExitCode Run() {
    move.place = ServerOf(options.directory);
    Connect();
    ListLinks();
    const InterruptWatch interrupts;
    Move();
    Tell();
    return kDone;
  }

 private:
  fs::path OldPath(const MovedFile& file) const { return OldFiles(options.directory) / file.name; }

  void ListLinks();
  void AddLink(const fs::path& name);
  void FindTables();
  void HoldAll();
  void Move();
  void MakeReady(MovedFile& file, MoveProgress& progress);
  bool IsUnchanged(const MovedFile& file, Storage& linked, MoveProgress& progress);
  void MakeAnew(const MovedFile& file, Storage& linked, MoveProgress& progress) const;
  uint64_t Work();
  void Switch(server::ServerTransaction& transaction);
  void Tell() const;

  std::vector<ServerTable> tables_;   // of the files that return
  std::vector<std::string> staying_;  // tables that no link leads to
};

void MovingBack::AddLink(const fs::path& name) {
  const fs::path path = options.directory / name;
  if (!IsLink(path)) return;
  const server::LinkFile place = ReadLink(path);
  if (place.server != move.place.server || place.schema != move.place.schema) {
    throw Failure(kSystem, Say(Message::OtherServer, PathToUtf8(path), ServerName(place), Place()));
  }
  move.files.push_back({name, place.table, false});
}

void MovingBack::ListLinks() {
  const Dictionary dictionary = ReadDictionary(options.directory);
  std::vector<fs::path> names = DatabaseFiles(dictionary, Message::FileOutsideMove);
  for (const fs::directory_entry& entry : fs::directory_iterator(options.directory)) {
    const fs::path name = entry.path().filename();
    if (std::ranges::find(names, name) == names.end()) names.push_back(name);
  }
  for (const fs::path& name : names) AddLink(name);
}

void MovingBack::FindTables() {
  move.filesTable = FilesTableOf(*link, move.place.schema);
  const std::vector<ServerTable> all = TablesOf(*link, move.place.schema);
  for (const MovedFile& file : move.files) {
    const auto table = std::ranges::find(all, file.table, &ServerTable::name);
    if (table == all.end()) {
      throw Failure(kSystem,
                    PathToUtf8(file.name) + ": " + ServerStatusText(btrieve::kFileNotFound));
    }
    tables_.push_back(*table);
  }
  for (const ServerTable& table : all) {
    const bool returns =
        std::ranges::find(move.files, table.name, &MovedFile::table) != move.files.end();
    if (!returns) staying_.push_back(table.name);
  }
  move.firstFile = tables_.front().id;
}

void MovingBack::HoldAll() {
  const std::vector<std::string> stations = HoldTables(*link, move.place.schema, tables_);
  if (!stations.empty()) throw Failure(kSystem, Say(Message::StationsAreThere, Joined(stations)));
}

// The old file itself serves where nothing has happened since.
bool MovingBack::IsUnchanged(const MovedFile& file, Storage& linked, MoveProgress& progress) {
  std::error_code ignored;
  if (!fs::exists(OldPath(file), ignored)) return false;
  auto old = HoldFile(OldPath(file));
  if (FindDifference(old->Base(), linked, progress.NextPart())) return false;
  files.push_back(std::move(old));
  return true;
}

void MovingBack::MakeAnew(const MovedFile& file, Storage& linked, MoveProgress& progress) const {
  const fs::path path = ReadyFiles(options.directory) / file.name;
  std::error_code ignored;
  fs::create_directories(path.parent_path(), ignored);
  server::CopyToFile(linked, WholePath(path), progress.NextPart());
  Storage copy;
  copy.Open(WholePath(path));
  copy.EnterRead();
  RequireAlike(linked, copy, PathToUtf8(file.name), progress.NextPart());
}

void MovingBack::MakeReady(MovedFile& file, MoveProgress& progress) {
  Asking(PathToUtf8(file.name), [&] {
    const auto linked = OpenTable(move.place, file.table);
    records += linked->Counts().records;
    file.isNew = !IsUnchanged(file, *linked, progress);
    if (file.isNew && !options.isDryRun) MakeAnew(file, *linked, progress);
  });
}

// At most: what has not changed is only compared.
uint64_t MovingBack::Work() {
  uint64_t work = 0;
  for (const MovedFile& file : move.files) {
    const auto linked = OpenTable(move.place, file.table);
    work += WorkOfComparison(*linked);
  }
  return work;
}

void MovingBack::Switch(server::ServerTransaction& transaction) {
  RestFiles(files);
  std::error_code ignored;
  fs::create_directories(OldFiles(options.directory), ignored);
  WriteMove(options.directory, move);
  Asking(Place(), [&] {
    GiveUpTables(*link, move.place.schema, tables_, options.keep);
    transaction.Commit();
  });
  PutReadyFiles(options.directory, move);
  ForgetMove(options.directory);
}

void MovingBack::Move() {
  try {
    auto transaction =
        Asking(Place(), [&] { return std::make_unique<server::ServerTransaction>(link); });
    Asking(Place(), [&] {
      HoldMark(*link, move.mark);
      FindTables();
      HoldAll();
    });
    MoveProgress progress(streams, Say(Message::MovingFrom, move.place.schema),
                          Asking(Place(), [&] { return Work(); }));
    for (MovedFile& file : move.files) MakeReady(file, progress);
    if (!options.isDryRun) Switch(*transaction);
  } catch (const Failure&) {
    files.clear();
    if (SettleMove(options.directory, streams) != Settled::Made) throw;
  }
}

void MovingBack::Tell() const {
  const auto isNew = [](const MovedFile& file) { return file.isNew; };
  const auto made = static_cast<uint64_t>(std::ranges::count_if(move.files, isNew));
  const fs::path old = OldFiles(options.directory);
  streams.out << PathToUtf8(options.directory) << ": "
              << Say(options.isDryRun ? Message::CouldBeMovedBack : Message::MovedBack,
                     Counted(move.files.size(), Message::Files), Counted(records, Message::Records),
                     Counted(made, Message::FilesChanged))
              << '\n';
  if (!staying_.empty()) {
    streams.out << Say(Message::TablesStay, move.place.schema, Joined(staying_)) << '\n';
  }
  if (options.isDryRun) return;
  if (const size_t left = DropEmptyFolders(options.directory); left != 0) {
    streams.out << Say(Message::OldFilesLeft, PathToUtf8(old), Counted(left, Message::Files))
                << '\n';
  }
}

}  // namespace

ExitCode MoveBack(const MoveOptions& options, const Streams& streams) {
  return MovingBack(options, streams).Run();
}

}  // namespace qrndata
