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

class MovingBack {
 public:
  MovingBack(const MoveOptions& options, const Streams& streams)
      : options_(options), streams_(streams) {
    move_.way = MoveRecord::Way::Back;
    move_.mark = NewMark();
  }

  ExitCode Run() {
    move_.place = ServerOf(options_.directory);
    link_ = Asking(Place(), [&] { return ConnectFor(move_.place.server); });
    ListLinks();
    const InterruptWatch interrupts;
    Move();
    Tell();
    return kDone;
  }

 private:
  std::string Place() const { return ServerName(move_.place); }
  fs::path OldPath(const MovedFile& file) const { return OldFiles(options_.directory) / file.name; }

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

  const MoveOptions& options_;
  const Streams& streams_;
  MoveRecord move_;
  std::shared_ptr<server::ServerLink> link_;
  std::vector<ServerTable> tables_;   // of the files that return
  std::vector<std::string> staying_;  // tables that no link leads to
  SoleFiles files_;                   // old ones that return
  uint64_t records_ = 0;
};

void MovingBack::AddLink(const fs::path& name) {
  const fs::path path = options_.directory / name;
  if (!IsLink(path)) return;
  const server::LinkFile link = ReadLink(path);
  if (link.server != move_.place.server || link.schema != move_.place.schema) {
    throw Failure(kSystem, Say(Message::OtherServer, PathToUtf8(path), ServerName(link), Place()));
  }
  move_.files.push_back({name, link.table, false});
}

void MovingBack::ListLinks() {
  const Dictionary dictionary = ReadDictionary(options_.directory);
  std::vector<fs::path> names = DatabaseFiles(dictionary, Message::FileOutsideMove);
  for (const fs::directory_entry& entry : fs::directory_iterator(options_.directory)) {
    const fs::path name = entry.path().filename();
    if (std::ranges::find(names, name) == names.end()) names.push_back(name);
  }
  for (const fs::path& name : names) AddLink(name);
}

void MovingBack::FindTables() {
  move_.filesTable = FilesTableOf(*link_, move_.place.schema);
  const std::vector<ServerTable> all = TablesOf(*link_, move_.place.schema);
  for (const MovedFile& file : move_.files) {
    const auto table = std::ranges::find(all, file.table, &ServerTable::name);
    if (table == all.end()) throw btrieve::Failure{btrieve::kFileNotFound};
    tables_.push_back(*table);
  }
  for (const ServerTable& table : all) {
    const bool returns =
        std::ranges::find(move_.files, table.name, &MovedFile::table) != move_.files.end();
    if (!returns) staying_.push_back(table.name);
  }
  move_.firstFile = tables_.front().id;
}

void MovingBack::HoldAll() {
  const std::vector<std::string> stations = HoldTables(*link_, move_.place.schema, tables_);
  if (!stations.empty()) throw Failure(kSystem, Say(Message::StationsAreThere, Joined(stations)));
}

// The old file itself serves where nothing has happened since.
bool MovingBack::IsUnchanged(const MovedFile& file, Storage& linked, MoveProgress& progress) {
  std::error_code ignored;
  if (!fs::exists(OldPath(file), ignored)) return false;
  auto old = HoldFile(OldPath(file));
  if (FindDifference(old->Base(), linked, progress.NextPart())) return false;
  files_.push_back(std::move(old));
  return true;
}

void MovingBack::MakeAnew(const MovedFile& file, Storage& linked, MoveProgress& progress) const {
  const fs::path path = ReadyFiles(options_.directory) / file.name;
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
    const auto linked = OpenTable(move_.place, file.table);
    records_ += linked->Counts().records;
    file.isNew = !IsUnchanged(file, *linked, progress);
    if (file.isNew && !options_.isDryRun) MakeAnew(file, *linked, progress);
  });
}

// At most: what has not changed is only compared.
uint64_t MovingBack::Work() {
  uint64_t work = 0;
  for (const MovedFile& file : move_.files) {
    const auto linked = OpenTable(move_.place, file.table);
    work += WorkOfComparison(*linked);
  }
  return work;
}

void MovingBack::Switch(server::ServerTransaction& transaction) {
  RestFiles(files_);
  std::error_code ignored;
  fs::create_directories(OldFiles(options_.directory), ignored);
  WriteMove(options_.directory, move_);
  Asking(Place(), [&] {
    GiveUpTables(*link_, move_.place.schema, tables_, options_.keep);
    transaction.Commit();
  });
  PutReadyFiles(options_.directory, move_);
  ForgetMove(options_.directory);
}

void MovingBack::Move() {
  try {
    auto transaction =
        Asking(Place(), [&] { return std::make_unique<server::ServerTransaction>(link_); });
    Asking(Place(), [&] {
      HoldMark(*link_, move_.mark);
      FindTables();
      HoldAll();
    });
    MoveProgress progress(streams_, Say(Message::MovingFrom, move_.place.schema),
                          Asking(Place(), [&] { return Work(); }));
    for (MovedFile& file : move_.files) MakeReady(file, progress);
    if (!options_.isDryRun) Switch(*transaction);
  } catch (const Failure&) {
    files_.clear();
    if (SettleMove(options_.directory, streams_) != Settled::Made) throw;
  }
}

void MovingBack::Tell() const {
  const auto isNew = [](const MovedFile& file) { return file.isNew; };
  const auto made = static_cast<uint64_t>(std::ranges::count_if(move_.files, isNew));
  const fs::path old = OldFiles(options_.directory);
  streams_.out << PathToUtf8(options_.directory) << ": "
               << Say(options_.isDryRun ? Message::CouldBeMovedBack : Message::MovedBack,
                      Counted(move_.files.size(), Message::Files),
                      Counted(records_, Message::Records), Counted(made, Message::FilesChanged))
               << '\n';
  if (!staying_.empty()) {
    streams_.out << Say(Message::TablesStay, move_.place.schema, Joined(staying_)) << '\n';
  }
  if (options_.isDryRun) return;
  if (const size_t left = DropEmptyFolders(options_.directory); left != 0) {
    streams_.out << Say(Message::OldFilesLeft, PathToUtf8(old), Counted(left, Message::Files))
                 << '\n';
  }
}

}  // namespace

ExitCode MoveBack(const MoveOptions& options, const Streams& streams) {
  return MovingBack(options, streams).Run();
}

}  // namespace qrndata
