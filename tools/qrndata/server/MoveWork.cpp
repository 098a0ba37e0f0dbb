#include "tools/qrndata/server/MoveWork.h"

#include "btrieve/server/ServerFile.h"
#include "tools/qrndata/DatabaseFiles.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/server/MoveOnServer.h"
#include "tools/qrndata/server/MovePlaces.h"
#include "tools/qrndata/server/ServerAccess.h"

namespace qrndata {

namespace fs = std::filesystem;
using btrieve::Difference;
using btrieve::SoleFile;
using btrieve::Storage;

namespace {

struct DifferenceRow {
  Difference::What what;
  Message text;
};
constexpr DifferenceRow kDifferences[] = {
    {Difference::What::MakeUp, Message::OtherMakeUp},
    {Difference::What::Owner, Message::OtherOwner},
    {Difference::What::Counts, Message::OtherCounts},
    {Difference::What::Record, Message::RecordDiffers},
    {Difference::What::Missing, Message::RecordMissing},
    {Difference::What::More, Message::MoreRecords},
};

std::string TextOf(const Difference& difference) {
  std::string order = difference.slot == btrieve::kPhysicalSlot
                          ? Say(Message::ByPlace)
                          : Say(Message::AlongKey, difference.slot);
  for (const DifferenceRow& row : kDifferences) {
    if (row.what == difference.what) return Say(row.text, order, Grouped(difference.rank + 1));
  }
  return order;
}

// The dead one's transaction may be at its end still; then the user is told to try again.
bool AskWhetherMade(const fs::path& directory, const MoveRecord& move) {
  const std::string what = Say(Message::MoveUndecided, PathToUtf8(directory));
  return Asking(what, [&] { return WasMade(*ConnectFor(move.place.server), move); });
}

}  // namespace

Moving::Moving(const MoveOptions& given, const Streams& told, MoveRecord::Way way)
    : options(given), streams(told) {
  move.way = way;
  move.mark = NewMark();
}

std::string Moving::Place() const { return ServerName(move.place); }

void Moving::Connect() {
  link = Asking(Place(), [&] { return ConnectFor(move.place.server); });
}

std::unique_ptr<SoleFile> HoldFile(const fs::path& path) {
  std::unique_ptr<SoleFile> file;
  Require(SoleFile::Open(WholePath(path), file), PathToUtf8(path));
  return file;
}

void RestFiles(const SoleFiles& files) {
  for (const auto& file : files) Require(file->Rest(), file->Path());
}

std::unique_ptr<Storage> OpenTable(const btrieve::server::LinkFile& place,
                                   const std::string& table) {
  auto file = std::make_unique<Storage>();
  file->OpenForeign(std::make_unique<btrieve::server::ServerFile>(
      btrieve::server::LinkFile{place.server, place.schema, table}));
  return file;
}

void RequireAlike(Storage& from, Storage& to, const std::string& name,
                  const btrieve::WorkWatch& watch) {
  const auto difference = FindDifference(from, to, watch);
  if (difference) throw Failure(kSystem, Say(Message::CopyDiffers, name, TextOf(*difference)));
}

btrieve::WorkWatch MoveProgress::NextPart() {
  before_ = done_;
  return [this](uint64_t records) {
    done_ = before_ + records;
    progress_.Update(done_, done_);
    if (InterruptWatch::WasInterrupted()) {
      throw Failure(kInterrupted, Say(Message::MoveInterrupted));
    }
  };
}

Settled SettleMove(const fs::path& directory, const Streams& streams) {
  const auto move = ReadMove(directory);
  if (!move) {
    DropUnused(directory);
    return Settled::NothingWas;
  }
  const bool wasMade = AskWhetherMade(directory, *move);
  if (move->way == MoveRecord::Way::There) {
    if (!wasMade) PutOldFiles(directory, *move);
  } else if (wasMade) {
    PutReadyFiles(directory, *move);
  }
  ForgetMove(directory);
  DropUnused(directory);
  streams.out << PathToUtf8(directory) << ": "
              << Say(wasMade ? Message::MoveFinished : Message::MoveUndone) << '\n';
  return wasMade ? Settled::Made : Settled::Undone;
}

}  // namespace qrndata
