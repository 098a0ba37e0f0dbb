// A layer below the storage, which passes everything on to the system's files.
#include "SelfKill.h"

#include <sqlite3.h>

#include <cstring>

#include "Die.h"
#include "btrieve/PageCache.h"

namespace btrieve::test {
namespace {

uint32_t momentsLeft = 0;
Moments counted = Moments::Writes;

bool IsLast() { return momentsLeft > 0 && --momentsLeft == 0; }
bool IsLastOf(Moments moments) {
  return (moments == Moments::Writes || counted == Moments::All) && IsLast();
}
void Pass(Moments moments) {
  if (IsLastOf(moments)) Die();
}

sqlite3_file* Real(sqlite3_file* file) { return file + 1; }
const sqlite3_io_methods* Methods(sqlite3_file* file) { return Real(file)->pMethods; }

int Close(sqlite3_file* file) { return Methods(file)->xClose(Real(file)); }
int Read(sqlite3_file* file, void* buffer, int amount, sqlite3_int64 offset) {
  return Methods(file)->xRead(Real(file), buffer, amount, offset);
}
int Write(sqlite3_file* file, const void* bytes, int amount, sqlite3_int64 offset) {
  if (IsLastOf(Moments::Writes)) {
    (void)Methods(file)->xWrite(Real(file), bytes, amount / 2, offset);
    Die();
  }
  return Methods(file)->xWrite(Real(file), bytes, amount, offset);
}
int Truncate(sqlite3_file* file, sqlite3_int64 size) {
  Pass(Moments::Writes);
  return Methods(file)->xTruncate(Real(file), size);
}
int Sync(sqlite3_file* file, int flags) {
  Pass(Moments::All);
  return Methods(file)->xSync(Real(file), flags);
}
int FileSize(sqlite3_file* file, sqlite3_int64* size) {
  return Methods(file)->xFileSize(Real(file), size);
}
int Lock(sqlite3_file* file, int level) { return Methods(file)->xLock(Real(file), level); }
int Unlock(sqlite3_file* file, int level) { return Methods(file)->xUnlock(Real(file), level); }
int CheckReservedLock(sqlite3_file* file, int* held) {
  return Methods(file)->xCheckReservedLock(Real(file), held);
}
int FileControl(sqlite3_file* file, int operation, void* argument) {
  return Methods(file)->xFileControl(Real(file), operation, argument);
}
int SectorSize(sqlite3_file* file) { return Methods(file)->xSectorSize(Real(file)); }
int DeviceCharacteristics(sqlite3_file* file) {
  return Methods(file)->xDeviceCharacteristics(Real(file));
}
int ShmMap(sqlite3_file* file, int region, int size, int extend, void volatile** memory) {
  return Methods(file)->xShmMap(Real(file), region, size, extend, memory);
}
int ShmLock(sqlite3_file* file, int offset, int count, int flags) {
  Pass(Moments::All);
  return Methods(file)->xShmLock(Real(file), offset, count, flags);
}
// Stands between the two copies of the log's head that a commit writes.
void ShmBarrier(sqlite3_file* file) {
  Pass(Moments::All);
  Methods(file)->xShmBarrier(Real(file));
}
int ShmUnmap(sqlite3_file* file, int remove) {
  return Methods(file)->xShmUnmap(Real(file), remove);
}

constexpr sqlite3_io_methods kMethods = {2,
                                         Close,
                                         Read,
                                         Write,
                                         Truncate,
                                         Sync,
                                         FileSize,
                                         Lock,
                                         Unlock,
                                         CheckReservedLock,
                                         FileControl,
                                         SectorSize,
                                         DeviceCharacteristics,
                                         ShmMap,
                                         ShmLock,
                                         ShmBarrier,
                                         ShmUnmap,
                                         nullptr,
                                         nullptr};

sqlite3_vfs* below = nullptr;

int Open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
  std::memset(static_cast<void*>(Real(file)), 0, sizeof(sqlite3_file));
  const int result = below->xOpen(below, name, Real(file), flags, outFlags);
  file->pMethods = Real(file)->pMethods ? &kMethods : nullptr;
  return result;
}
int Delete(sqlite3_vfs*, const char* name, int syncDirectory) {
  Pass(Moments::Writes);
  return below->xDelete(below, name, syncDirectory);
}

}  // namespace

bool PrepareToDie() {
  if (!UseSharedPageCache() || sqlite3_initialize() != SQLITE_OK) return false;
  below = sqlite3_vfs_find(nullptr);
  static sqlite3_vfs vfs = *below;
  vfs.szOsFile += static_cast<int>(sizeof(sqlite3_file));
  vfs.zName = "mortal";
  vfs.pNext = nullptr;
  vfs.xOpen = Open;
  vfs.xDelete = Delete;
  return sqlite3_vfs_register(&vfs, 1) == SQLITE_OK;
}

void KillAt(uint32_t n, Moments moments) {
  momentsLeft = n;
  counted = moments;
}

}  // namespace btrieve::test
