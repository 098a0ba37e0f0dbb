// Opening data files: who else has them open, whether they are ours, whether they are sound.
#include <algorithm>

#include "btrieve/LogExam.h"
#include "btrieve/Session.h"

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

// Leaves the open byte held, shared or exclusively.
Status DeclareOpen(LockSpace& space, bool exclusive, bool& alone) {
  alone = space.TryExclusive(lockbyte::kOpen);
  if (exclusive) return alone ? kOk : kIncompatibleMode;
  if (alone) space.Release(lockbyte::kOpen);
  return space.TryShared(lockbyte::kOpen) ? kOk : kIncompatibleMode;
}

}  // namespace

// The path must still lead to the opened file once nobody can replace it any more.
Status Session::OpenFile(const std::string& path, bool exclusive, std::shared_ptr<DataFile>& file,
                         bool& alone) {
  HeldByte gate;
  while (true) {
    FileIdentity identity;
    if (const Status status = Identify(path, identity)) return status;
    file = std::make_shared<DataFile>(path, identity);
    LockSpace& space = file->Locks().Space();
    if (const Status status = space.Open(path)) return status;
    const Status status = Retry(true, [&]() -> Status {
      gate = HeldByte::Exclusive(space, lockbyte::kGate);
      return gate ? kOk : kFileInUse;
    });
    if (status != kOk) return status;
    if (Identify(path, identity) == kOk && identity == space.Identity() &&
        identity == file->Identity()) {
      break;
    }
    gate.Release();
  }
  if (const Status status = DeclareOpen(file->Locks().Space(), exclusive, alone)) return status;
  if (const Status status = Examine(*file, alone)) return status;
  file->Base().Open(path);
  file->TakeOverLog(alone);
  file->openExclusively = exclusive;
  gate.Release();
  Register(file);
  return kOk;
}

Status Session::Reopen(DataFile& file, bool exclusive) {
  if (file.openExclusively && file.openCursors > 0) return kIncompatibleMode;
  if (!exclusive) return kOk;
  if (file.openCursors > 0) return kIncompatibleMode;
  LockSpace& space = file.Locks().Space();
  const HeldByte gate = HeldByte::Exclusive(space, lockbyte::kGate);
  if (!gate) return kFileInUse;
  space.Release(lockbyte::kOpen);
  file.openExclusively = space.TryExclusive(lockbyte::kOpen);
  if (file.openExclusively) return kOk;
  (void)space.TryShared(lockbyte::kOpen);
  return kIncompatibleMode;
}

Status Session::UseFile(const std::string& path, bool exclusive, std::shared_ptr<DataFile>& file) {
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
  bool alone = false;
  return file ? kOk : OpenFile(path, false, file, alone);
}

}  // namespace btrieve
