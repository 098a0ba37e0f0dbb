// Opening data files: who else has them open, whether they are ours, whether they are sound.
#include <algorithm>
#include <array>

#include "btrieve/legacy/OldFile.h"
#include "btrieve/pages/LogExam.h"
#include "btrieve/server/ServerFile.h"
#include "btrieve/session/Session.h"

namespace btrieve {
namespace {

// Files up to here are read through when nobody else has them open, so that damage shows at once.
constexpr uint64_t kReadThroughSize = 4u << 20;

bool PagesAreSound(const LockSpace& space, uint64_t size) {
  std::vector<uint8_t> page(kStoragePageSize);
  for (uint64_t at = 0; at < size; at += kStoragePageSize) {
    if (space.ReadAt(at, page) != page.size()) return false;
    if (!PageIsSound(page.data(), at / kStoragePageSize + 1)) return false;
  }
  return true;
}

uint64_t AnnouncedSize(ByteView start) noexcept {
  const uint32_t pages = static_cast<uint32_t>(BoundPosition(start.subspan(28, 4)));
  return uint64_t{pages} * kStoragePageSize;
}

// 30 for what is no data file. With a log beside it the file may lag behind, and only the log's
// reader can tell what is sound.
Status Examine(DataFile& file, bool alone) {
  const LockSpace& space = file.Locks().Space();
  std::vector<uint8_t> start(Storage::kStartSize);
  if (space.ReadAt(0, start) != start.size() || !Storage::IsDataFile(start)) {
    return kNotABtrieveFile;
  }
  if (!alone) return kOk;
  if (SizeOfFile(file.LogPath()) != 0) return LogIsSound(file.LogPath()) ? kOk : kIoError;
  const uint64_t size = space.Size();
  if (size < AnnouncedSize(start) || size % kStoragePageSize != 0) return kIoError;
  return size > kReadThroughSize || PagesAreSound(space, size) ? kOk : kIoError;
}

// Leaves the open byte held, shared or exclusively. Who cannot write a file cannot keep others from
// it: alone then means that nobody else has it open at the moment.
Status DeclareOpen(LockSpace& space, bool exclusive, bool& alone) {
  if (space.IsReadOnly()) {
    alone = !space.IsTaken(lockbyte::kOpen);
    if (exclusive) return kPermissionError;
    return space.TryShared(lockbyte::kOpen) ? kOk : kIncompatibleMode;
  }
  alone = space.TryExclusive(lockbyte::kOpen);
  if (exclusive) return alone ? kOk : kIncompatibleMode;
  if (alone) space.Release(lockbyte::kOpen);
  return space.TryShared(lockbyte::kOpen) ? kOk : kIncompatibleMode;
}

// False where the system forbids it; the storage is closed then.
bool TryOpen(DataFile& file, Storage::Access access) {
  try {
    file.Base().Open(file.Path(), access);
    return true;
  } catch (const Failure& failure) {
    file.Base().Close();
    if (failure.status != kPermissionError) throw;
    return false;
  }
}

bool HasLog(const DataFile& file) {
  return SizeOfFile(file.LogPath()) != 0 || FileExists(file.Path() + "-shm");
}

// As it stands, the gate kept shared, so that nobody begins to write. -1 when somebody has.
Status OpenUnchanging(DataFile& file, HeldByte& gate) {
  const bool hadLog = HasLog(file);
  gate.Release();
  if (!file.Locks().KeepWritersOut() || (!hadLog && HasLog(file))) return kLookAgain;
  return TryOpen(file, Storage::Access::Unchanging) ? kOk : kPermissionError;
}

// A file that cannot be written, or stands in a folder where no log can be made, is read. The log's
// reader finds what has not been carried into the file, if the log's index is there, too.
Status OpenStorage(DataFile& file, HeldByte& gate) {
  if (!file.Locks().Space().IsReadOnly() && TryOpen(file, Storage::Access::Write)) return kOk;
  if (HasLog(file) && TryOpen(file, Storage::Access::Read)) return kOk;
  return SizeOfFile(file.LogPath()) != 0 ? kPermissionError : OpenUnchanging(file, gate);
}

bool IsOldFile(const LockSpace& space) {
  std::array<uint8_t, legacy::kOldStart> start{};
  return space.ReadAt(0, start) == start.size() && legacy::IsOldFile(start);
}

// An older record manager that has a file open may keep others from writing it.
Status OpenLocks(LockSpace& space, const std::string& path) {
  const Status status = space.Open(path);
  if (status != kFileInUse || space.OpenToRead(path) != kOk) return status;
  return IsOldFile(space) ? kOk : status;
}

// The whole file, at most so large, that is only read, whatever its own rights.
Status ReadWhole(LockSpace& space, bool exclusive, uint64_t largest, std::vector<uint8_t>& bytes) {
  if (exclusive) return kPermissionError;
  if (!space.TryShared(lockbyte::kOpen)) return kIncompatibleMode;
  if (space.Size() > largest) return kNotABtrieveFile;
  bytes.resize(space.Size());
  return space.ReadAt(0, bytes) == bytes.size() ? kOk : kIoError;
}

Status OpenOld(DataFile& file, bool exclusive) {
  std::vector<uint8_t> bytes;
  LockSpace& space = file.Locks().Space();
  const Status status = ReadWhole(space, exclusive, legacy::kLargestOldFile, bytes);
  if (status != kOk) return status;
  file.Base().OpenForeign(std::make_unique<legacy::OldFile>(std::move(bytes)));
  return kOk;
}

// At the server; a gate that others hold is passed soon.
Status DeclareOpenElsewhere(LockBytes& bytes, bool exclusive) {
  const HeldByte gate = HeldByte::Exclusive(bytes, lockbyte::kGate);
  if (!gate) return kFileInUse;
  const bool granted =
      exclusive ? bytes.TryExclusive(lockbyte::kOpen) : bytes.TryShared(lockbyte::kOpen);
  return granted ? kOk : kIncompatibleMode;
}

// Others may open the file while its server is asked, which may take seconds.
Status ReachServer(DataFile& file, HeldByte& gate) {
  std::vector<uint8_t> bytes;
  LockSpace& space = file.Locks().Space();
  const Status status = ReadWhole(space, false, server::kLargestLink, bytes);
  if (status != kOk) return status;
  gate.Release();
  std::unique_ptr<ForeignFile> linked = server::OpenLinked(bytes);
  file.Locks().HoldElsewhere(linked->MakeLocks());
  file.Base().OpenForeign(std::move(linked));
  return kOk;
}

Status OpenOwn(DataFile& file, bool exclusive, HeldByte& gate, bool& alone) {
  if (const Status status = DeclareOpen(file.Locks().Space(), exclusive, alone)) return status;
  if (const Status status = Examine(file, alone)) return status;
  if (const Status status = OpenStorage(file, gate)) return status;
  alone = alone && !file.Base().IsReadOnly();
  if (!file.Base().IsReadOnly()) file.TakeOverLog(alone);
  return kOk;
}

// A name that stands in a file must not make this machine call another one.
bool LeadsAway(const std::string& path) noexcept {
  LockSpace space;
  return space.Open(path) == kOk && server::IsLink(space);
}

}  // namespace

// The path must still lead to the opened file once nobody can replace it any more.
Status Session::PassGate(const std::string& path, std::shared_ptr<DataFile>& file, HeldByte& gate) {
  FileIdentity identity;
  if (const Status status = Identify(path, identity)) return status;
  file = std::make_shared<DataFile>(path, identity);
  LockSpace& space = file->Locks().Space();
  if (const Status status = OpenLocks(space, path)) return status;
  const Status status = Retry(true, [&]() -> Status {
    gate = HeldByte::Exclusive(space, lockbyte::kGate);
    return gate ? kOk : kFileInUse;
  });
  if (status != kOk) return status;
  const bool isStill = Identify(path, identity) == kOk && identity == space.Identity() &&
                       identity == file->Identity();
  return isStill ? kOk : kLookAgain;
}

// Links at several places may lead to one table, which is one file then.
std::shared_ptr<DataFile> Session::FindSame(const DataFile& linked) {
  const int64_t number = linked.Base().Foreign()->Number();
  for (const std::shared_ptr<DataFile>& file : OpenFiles()) {
    const ForeignFile* foreign = file->Base().Foreign();
    if (foreign && file->Home() == linked.Home() && foreign->Number() == number) return file;
  }
  return nullptr;
}

// Who waited at the gate may have waited for who put another file in its place, or other keys.
Status Session::DeclareLink(DataFile& file, bool exclusive) {
  const Status status =
      Retry(true, [&] { return DeclareOpenElsewhere(file.Locks().Bytes(), exclusive); });
  if (status != kOk) return status;
  return file.Base().Foreign()->IsInPlace() ? kOk : kLookAgain;
}

Status Session::OpenLink(const std::shared_ptr<DataFile>& found, bool exclusive, HeldByte& gate,
                         std::shared_ptr<DataFile>& file) {
  if (const Status status = ReachServer(*found, gate)) return status;
  if (std::shared_ptr<DataFile> same = FindSame(*found)) {
    file = std::move(same);
    return Reopen(*file, exclusive);
  }
  if (const Status status = DeclareLink(*found, exclusive)) return status;
  found->openExclusively = exclusive;
  file = found;
  return kOk;
}

Status Session::OpenOnce(const std::string& path, bool exclusive, std::shared_ptr<DataFile>& file,
                         bool& alone) {
  std::shared_ptr<DataFile> found;
  HeldByte gate;
  if (const Status status = PassGate(path, found, gate)) return status;
  const LockSpace& space = found->Locks().Space();
  if (server::IsLink(space)) return OpenLink(found, exclusive, gate, file);
  const Status status =
      IsOldFile(space) ? OpenOld(*found, exclusive) : OpenOwn(*found, exclusive, gate, alone);
  if (status != kOk) return status;
  found->openExclusively = exclusive;
  gate.Release();
  file = std::move(found);
  return kOk;
}

Status Session::OpenFile(const std::string& path, bool exclusive, std::shared_ptr<DataFile>& file,
                         bool& alone) {
  Status status = kLookAgain;
  while (status == kLookAgain) status = OpenOnce(path, exclusive, file, alone);
  if (status == kOk) Register(file);
  return status;
}

// Who had it open stood on what may be another server's state by now, and is told so.
Status Session::ReachAnew(DataFile& file, bool exclusive) {
  const auto& used = transaction_.files;
  const auto isIt = [&](const std::shared_ptr<DataFile>& each) { return each.get() == &file; };
  if (std::ranges::any_of(used, isIt)) return kNotActive;  // until the transaction has been ended
  cursors_.ForEachOn(file, [](Cursor& cursor) {
    cursor.walk.End();
    cursor.isLost = true;
    cursor.locks.clear();
    cursor.lockKind = LockKind::None;
  });
  file.openExclusively = false;
  file.openNowhere = true;
  HeldByte gate;
  Status status = kLookAgain;
  while (status == kLookAgain) {
    status = ReachServer(file, gate);
    if (status == kOk) status = DeclareLink(file, exclusive);
  }
  if (status != kOk) return status;
  file.openExclusively = exclusive;
  file.openNowhere = false;
  return kOk;
}

Status Session::Reopen(DataFile& file, bool exclusive) {
  if (file.Base().IsLost() || file.openNowhere) return ReachAnew(file, exclusive);
  if (file.openExclusively && file.openCursors > 0) return kIncompatibleMode;
  if (!exclusive) return kOk;
  if (file.openCursors > 0) return kIncompatibleMode;
  if (file.Base().IsReadOnly()) return kPermissionError;
  LockBytes& space = file.Locks().Bytes();
  const HeldByte gate = HeldByte::Exclusive(space, lockbyte::kGate);
  if (!gate) return kFileInUse;
  space.Release(lockbyte::kOpen);
  file.openExclusively = space.TryExclusive(lockbyte::kOpen);
  if (file.openExclusively) return kOk;
  (void)space.TryShared(lockbyte::kOpen);
  return kIncompatibleMode;
}

Status Session::UseFile(const std::string& path, bool exclusive, std::shared_ptr<DataFile>& file) {
  if (IsRemote(path)) return kDirectoryError;
  FileIdentity identity;
  if (const Status status = Identify(path, identity)) return status;
  file = FindFile(identity);
  if (file) return Reopen(*file, exclusive);
  bool alone = false;
  if (const Status status = OpenFile(path, exclusive, file, alone)) return status;
  if (alone) FinishRedo(*file);
  return kOk;
}

Status Session::VisitFile(const std::string& path, std::shared_ptr<DataFile>& file) {
  FileIdentity identity;
  if (const Status status = Identify(path, identity)) return status;
  file = FindFile(identity);
  if (file) return kOk;
  if (LeadsAway(path)) return kFileNotFound;
  bool alone = false;
  return OpenFile(path, false, file, alone);
}

}  // namespace btrieve
