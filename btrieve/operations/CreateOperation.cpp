// Create: a new file is made aside and put in place whole, so that a crash leaves the old one or
// the new one.
#include "btrieve/files/AsideFile.h"
#include "btrieve/operations/Call.h"
#include "btrieve/server/LinkedFolder.h"
#include "btrieve/server/ServerFile.h"

namespace btrieve {
namespace {

constexpr int8_t kRefuseExisting = -1;
constexpr int8_t kRename = -127;
constexpr int8_t kDelete = -128;

// Keeps everybody out of the file that is to be replaced. 94 where it may not be; 25 while anybody
// has it open; -1 when the path leads to another file by now, to a link, or to none.
Status LockOut(Session& session, const std::string& path, LockSpace& space, HeldByte& gate) {
  const Status opened = space.Open(path);
  if (opened != kOk) return opened == kFileNotFound ? kLookAgain : opened;
  if (server::IsLink(space)) return kLookAgain;
  if (space.IsReadOnly()) return kPermissionError;
  const Status status = session.Retry(true, [&]() -> Status {
    gate = HeldByte::Exclusive(space, lockbyte::kGate);
    return gate ? kOk : kFileInUse;
  });
  if (status != kOk || !space.TryExclusive(lockbyte::kOpen)) return kCreateError;
  FileIdentity now;
  return Identify(path, now) == kOk && now == space.Identity() ? kOk : kLookAgain;
}

// A log left by a crash belongs to the old file and would be taken for the new one's. It goes into
// the old file first, should the replacing not come to pass.
void EmptyLog(const std::string& path) {
  try {
    const Connection old(SqliteName(path), SQLITE_OPEN_READWRITE);
    old.Run("SELECT count(*) FROM sqlite_schema");
  } catch (const Failure&) {  // no data file, or a damaged one: its log is of no use
  }
  RemoveFile(path + "-wal");
  RemoveFile(path + "-shm");
}

Status CheckPlace(Call& call, const std::string& path, bool& exists) {
  FileIdentity identity;
  const Status status = Identify(path, identity);
  exists = status == kOk;
  if (status == kFileNotFound) return DirectoryExists(DirectoryOf(path)) ? kOk : kCreateError;
  if (!exists) return status;
  if (call.keyNumber == kRefuseExisting) return kFileExists;
  return call.session.FindFile(identity) ? kCreateError : kOk;
}

// -1 when another file is there by now: it may be open and hold records already.
Status PlaceWhereNoneIs(AsideFile& aside) {
  const Status status = aside.PlaceAsNew();
  return status == kFileExists ? kLookAgain : status;
}

Status PlaceOverAnother(Session& session, AsideFile& aside, const std::string& path) {
  LockSpace old;
  HeldByte gate;
  if (const Status status = LockOut(session, path, old, gate)) return status;
  EmptyLog(path);
  return aside.Place([&](const std::string& from, const std::string& to) -> Status {
    if (!kReplacesOpenFiles) {  // others may come in and die, and leave a log
      gate.Release();
      old = LockSpace();
    }
    return PutInPlace(from, to) ? kOk : kCreateError;
  });
}

Status Place(Call& call, AsideFile& aside, const std::string& path, bool exists) {
  return exists ? PlaceOverAnother(call.session, aside, path) : PlaceWhereNoneIs(aside);
}

// In a folder whose dictionary is on a server. A table whose link does not get its place goes
// again.
Status PlaceLink(Call& call, const server::LinkFile& beside, const std::string& path, bool exists,
                 const FileSpec& spec) {
  const server::LinkFile link = server::MakeLinkedTable(beside, path, spec);
  Status status = kCreateError;
  try {
    AsideFile aside(path);
    if (WriteNewFile(aside.Path(), server::WriteLinkFile(link))) {
      status = Place(call, aside, path, exists);
    }
  } catch (...) {
    status = CaughtStatus();
  }
  if (status != kOk) (void)server::DropLinkedTable(link);
  return status;
}

Status PlaceFile(Call& call, const std::string& path, bool exists, const FileSpec& spec) {
  AsideFile aside(path);
  Storage::Create(aside.Path(), spec);
  return Place(call, aside, path, exists);
}

}  // namespace

// Processes that create one file at once are put in order by the file system: who comes second
// finds a file and goes by that.
Status MakeFile(Call& call) {
  if (call.keyNumber == kRename || call.keyNumber == kDelete) return kInvalidOperation;
  std::string path;
  if (const Status status = PathFromCaller(call.key, path)) return status;
  if (IsRemote(path)) return kDirectoryError;
  FileSpec spec;
  if (const Status status = ParseCreateBlock({call.data, call.room}, spec)) return status;
  Status status = kLookAgain;
  while (status == kLookAgain) {
    bool exists = false;
    if (const Status found = CheckPlace(call, path, exists)) return found;
    const auto link = exists ? server::LinkAt(path) : std::nullopt;
    if (link) return server::EmptyLinkedTable(*link, spec);
    const auto beside = server::LinkBeside(path);
    status =
        beside ? PlaceLink(call, *beside, path, exists, spec) : PlaceFile(call, path, exists, spec);
  }
  return status;
}

}  // namespace btrieve
