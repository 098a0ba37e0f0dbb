// A layer below the storage, which passes everything on to the system's files.
#include "SelfKill.h"

#include "Die.h"
#include "btrieve/pages/PageCache.h"
#include "btrieve/pages/PassThrough.h"

namespace btrieve::test {
namespace {

uint32_t momentsLeft = 0;
Moments counted = Moments::Writes;
void (*atLast)() noexcept = Die;

bool IsLast() { return momentsLeft > 0 && --momentsLeft == 0; }
bool IsLastOf(Moments moments) {
  return (moments == Moments::Writes || counted == Moments::All) && IsLast();
}
void Pass(Moments moments) {
  if (IsLastOf(moments)) atLast();
}

using Layer = PassThrough<sqlite3_file>;

sqlite3_file* Real(sqlite3_file* file) { return Layer::Below(file); }
const sqlite3_io_methods* Methods(sqlite3_file* file) { return Real(file)->pMethods; }

int Write(sqlite3_file* file, const void* bytes, int amount, sqlite3_int64 offset) {
  if (IsLastOf(Moments::Writes)) {
    (void)Methods(file)->xWrite(Real(file), bytes, amount / 2, offset);
    atLast();
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
int ShmLock(sqlite3_file* file, int offset, int count, int flags) {
  Pass(Moments::All);
  return Methods(file)->xShmLock(Real(file), offset, count, flags);
}
// Stands between the two copies of the log's head that a commit writes.
void ShmBarrier(sqlite3_file* file) {
  Pass(Moments::All);
  Methods(file)->xShmBarrier(Real(file));
}

constexpr sqlite3_io_methods kMethods = [] {
  sqlite3_io_methods methods = Layer::Methods();
  methods.xWrite = Write;
  methods.xTruncate = Truncate;
  methods.xSync = Sync;
  methods.xShmLock = ShmLock;
  methods.xShmBarrier = ShmBarrier;
  return methods;
}();

sqlite3_vfs* below = nullptr;

int Open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
  const int result = Layer::Open(below, name, file, flags, outFlags);
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
  static sqlite3_vfs vfs = Layer::Over(*below, "mortal");
  vfs.xOpen = Open;
  vfs.xDelete = Delete;
  return sqlite3_vfs_register(&vfs, 1) == SQLITE_OK;
}

void KillAt(uint32_t n, Moments moments) {
  momentsLeft = n;
  counted = moments;
  atLast = Die;
}

void HaltAt(uint32_t n) {
  KillAt(n, Moments::All);
  atLast = Halt;
}

}  // namespace btrieve::test
