#include "btrieve/CheckedVfs.h"

#include <bit>
#include <cstring>
#include <utility>

namespace btrieve {
namespace {

struct CheckedFile {
  sqlite3_file base;
  bool isData;  // a data file, as against its log
  SharedLogHead logHead;
  uint32_t mark;  // of the commit under way; 0 without one
  uint64_t headAtMark[kLogHeadWords];
};

constexpr size_t kMarkOffset = 132;  // the one word of the index's head that SQLite leaves unused
constexpr int kWriteLock = 0;        // among the locks of the index

uint32_t* MarkWord(SharedLogHead head) noexcept {
  return reinterpret_cast<uint32_t*>(const_cast<uint64_t*>(head)) + kMarkOffset / sizeof(uint32_t);
}
// Only the mark's own commit clears it, for another process may have set the next one already.
void ClearMark(CheckedFile& file) noexcept {
  uint32_t expected = std::exchange(file.mark, 0);
  if (expected == 0 || !file.logHead) return;
  __atomic_compare_exchange_n(MarkWord(file.logHead), &expected, 0, false, __ATOMIC_SEQ_CST,
                              __ATOMIC_SEQ_CST);
}
bool HeadHasChanged(const CheckedFile& file) noexcept {
  for (size_t word = 0; word < kLogHeadWords; ++word) {
    if (file.logHead[word] != file.headAtMark[word]) return true;
  }
  return false;
}

sqlite3_file* Real(sqlite3_file* file) noexcept {
  return reinterpret_cast<sqlite3_file*>(reinterpret_cast<CheckedFile*>(file) + 1);
}
CheckedFile* Ours(sqlite3_file* file) noexcept { return reinterpret_cast<CheckedFile*>(file); }

bool IsWholePage(const CheckedFile* file, int amount, sqlite3_int64 offset) noexcept {
  return file->isData && amount == static_cast<int>(kStoragePageSize) &&
         offset % static_cast<int>(kStoragePageSize) == 0;
}
uint64_t PageAt(sqlite3_int64 offset) noexcept {
  return static_cast<uint64_t>(offset) / kStoragePageSize + 1;
}

int Close(sqlite3_file* file) { return Real(file)->pMethods->xClose(Real(file)); }

int Read(sqlite3_file* file, void* buffer, int amount, sqlite3_int64 offset) {
  const int result = Real(file)->pMethods->xRead(Real(file), buffer, amount, offset);
  if (!IsWholePage(Ours(file), amount, offset)) return result;
  // A page that should be there and is not would pass for one of zeros.
  if (result == SQLITE_IOERR_SHORT_READ) return SQLITE_IOERR_READ;
  if (result != SQLITE_OK) return result;
  const bool sound = PageIsSound(static_cast<const uint8_t*>(buffer), PageAt(offset));
  return sound ? SQLITE_OK : SQLITE_IOERR_DATA;
}

int Write(sqlite3_file* file, const void* buffer, int amount, sqlite3_int64 offset) {
  if (!IsWholePage(Ours(file), amount, offset)) {
    return Real(file)->pMethods->xWrite(Real(file), buffer, amount, offset);
  }
  alignas(8) uint8_t page[kStoragePageSize];
  std::memcpy(page, buffer, sizeof page);
  const uint64_t sum = PageSum(page, PageAt(offset));
  std::memcpy(page + sizeof page - kPageSumSize, &sum, kPageSumSize);
  return Real(file)->pMethods->xWrite(Real(file), page, amount, offset);
}

int Truncate(sqlite3_file* file, sqlite3_int64 size) {
  return Real(file)->pMethods->xTruncate(Real(file), size);
}
int Sync(sqlite3_file* file, int flags) { return Real(file)->pMethods->xSync(Real(file), flags); }
int FileSize(sqlite3_file* file, sqlite3_int64* size) {
  return Real(file)->pMethods->xFileSize(Real(file), size);
}
int Lock(sqlite3_file* file, int level) { return Real(file)->pMethods->xLock(Real(file), level); }
int Unlock(sqlite3_file* file, int level) {
  return Real(file)->pMethods->xUnlock(Real(file), level);
}
int CheckReservedLock(sqlite3_file* file, int* held) {
  return Real(file)->pMethods->xCheckReservedLock(Real(file), held);
}
int FileControl(sqlite3_file* file, int operation, void* argument) {
  return Real(file)->pMethods->xFileControl(Real(file), operation, argument);
}
int SectorSize(sqlite3_file* file) { return Real(file)->pMethods->xSectorSize(Real(file)); }
// Not by parts of pages, which no checksum stands for.
int DeviceCharacteristics(sqlite3_file* file) {
  return Real(file)->pMethods->xDeviceCharacteristics(Real(file)) & ~SQLITE_IOCAP_SUBPAGE_READ;
}

int ShmMap(sqlite3_file* file, int region, int size, int extend, void volatile** memory) {
  const int result = Real(file)->pMethods->xShmMap(Real(file), region, size, extend, memory);
  if (region == 0) {
    Ours(file)->logHead = result == SQLITE_OK ? static_cast<SharedLogHead>(*memory) : nullptr;
  }
  return result;
}
// A commit that has been published is unmarked before others may write.
int ShmLock(sqlite3_file* file, int offset, int count, int flags) {
  constexpr int kLetGo = SQLITE_SHM_UNLOCK | SQLITE_SHM_EXCLUSIVE;
  CheckedFile& ours = *Ours(file);
  if (offset == kWriteLock && (flags & kLetGo) == kLetGo && ours.mark != 0 && ours.logHead &&
      HeadHasChanged(ours)) {
    ClearMark(ours);
  }
  return Real(file)->pMethods->xShmLock(Real(file), offset, count, flags);
}
void ShmBarrier(sqlite3_file* file) { Real(file)->pMethods->xShmBarrier(Real(file)); }
int ShmUnmap(sqlite3_file* file, int remove) {
  Ours(file)->logHead = nullptr;
  return Real(file)->pMethods->xShmUnmap(Real(file), remove);
}

// Version 2: pages are never mapped, so each read passes the check.
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

sqlite3_vfs* System() noexcept { return sqlite3_vfs_find(nullptr); }

int Open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
  CheckedFile* ours = Ours(file);
  std::memset(static_cast<void*>(ours), 0, sizeof *ours);
  std::memset(static_cast<void*>(Real(file)), 0, sizeof(sqlite3_file));
  ours->isData = (flags & SQLITE_OPEN_MAIN_DB) != 0;
  const int result = System()->xOpen(System(), name, Real(file), flags, outFlags);
  if (Real(file)->pMethods) ours->base.pMethods = &kMethods;
  return result;
}
int Delete(sqlite3_vfs*, const char* name, int syncDirectory) {
  return System()->xDelete(System(), name, syncDirectory);
}
int Access(sqlite3_vfs*, const char* name, int flags, int* result) {
  return System()->xAccess(System(), name, flags, result);
}
int FullPathname(sqlite3_vfs*, const char* name, int size, char* out) {
  return System()->xFullPathname(System(), name, size, out);
}
int Randomness(sqlite3_vfs*, int size, char* out) {
  return System()->xRandomness(System(), size, out);
}
int Sleep(sqlite3_vfs*, int microseconds) { return System()->xSleep(System(), microseconds); }
int CurrentTime(sqlite3_vfs*, double* time) { return System()->xCurrentTime(System(), time); }
int GetLastError(sqlite3_vfs*, int size, char* out) {
  return System()->xGetLastError(System(), size, out);
}
int CurrentTime64(sqlite3_vfs*, sqlite3_int64* time) {
  return System()->xCurrentTimeInt64(System(), time);
}

bool Register() noexcept {
  if (sqlite3_initialize() != SQLITE_OK || !System()) return false;
  static sqlite3_vfs vfs{};
  vfs.iVersion = 2;
  vfs.szOsFile = static_cast<int>(sizeof(CheckedFile)) + System()->szOsFile;
  vfs.mxPathname = System()->mxPathname;
  vfs.zName = "btrieve";
  vfs.xOpen = Open;
  vfs.xDelete = Delete;
  vfs.xAccess = Access;
  vfs.xFullPathname = FullPathname;
  vfs.xRandomness = Randomness;
  vfs.xSleep = Sleep;
  vfs.xCurrentTime = CurrentTime;
  vfs.xGetLastError = GetLastError;
  vfs.xCurrentTimeInt64 = CurrentTime64;
  return sqlite3_vfs_register(&vfs, 0) == SQLITE_OK;
}

}  // namespace

bool RegisterCheckedVfs() noexcept {
  static const bool registered = Register();
  return registered;
}

// Four lanes that each only multiply by odd numbers, rotate and exclusive-or: no single changed
// word can leave its lane's result as it was.
uint64_t PageSum(const uint8_t* page, uint64_t number) noexcept {
  constexpr uint64_t kFactor = 0x9E3779B97F4A7C15;
  uint64_t lanes[4] = {number, number + 1, number + 2, number + 3};
  for (size_t at = 0; at < kStoragePageSize; at += 32) {
    uint64_t words[4];
    std::memcpy(words, page + at, sizeof words);
    if (at + 32 == kStoragePageSize) words[3] = number;  // where the checksum itself stands
    for (int lane = 0; lane < 4; ++lane) {
      lanes[lane] = std::rotl((lanes[lane] ^ words[lane]) * kFactor, 29);
    }
  }
  uint64_t sum = 0;
  for (const uint64_t lane : lanes) sum = std::rotl((sum ^ lane) * kFactor, 31);
  return sum;
}

bool PageIsSound(const uint8_t* page, uint64_t number) noexcept {
  uint64_t stored;
  std::memcpy(&stored, page + kStoragePageSize - kPageSumSize, sizeof stored);
  return stored == PageSum(page, number);
}

namespace {

// Null where the connection's main file is not one of this layer's.
CheckedFile* MainFileOf(sqlite3* connection) noexcept {
  sqlite3_file* file = nullptr;
  sqlite3_file_control(connection, "main", SQLITE_FCNTL_FILE_POINTER, &file);
  return file && file->pMethods == &kMethods ? Ours(file) : nullptr;
}

}  // namespace

SharedLogHead LogHeadOf(sqlite3* connection) noexcept {
  const CheckedFile* file = MainFileOf(connection);
  return file ? file->logHead : nullptr;
}

void MarkCommit(sqlite3* connection) noexcept {
  CheckedFile* file = MainFileOf(connection);
  if (!file || !file->logHead) return;
  sqlite3_randomness(sizeof file->mark, &file->mark);
  file->mark |= 1;
  for (size_t word = 0; word < kLogHeadWords; ++word) file->headAtMark[word] = file->logHead[word];
  __atomic_store_n(MarkWord(file->logHead), file->mark, __ATOMIC_SEQ_CST);
}

void UnmarkCommit(sqlite3* connection) noexcept {
  if (CheckedFile* file = MainFileOf(connection)) ClearMark(*file);
}

bool IsCommitMarked(SharedLogHead head) noexcept {
  return __atomic_load_n(MarkWord(head), __ATOMIC_SEQ_CST) != 0;
}

bool WriteLockIsFree(sqlite3* connection) noexcept {
  constexpr int kLook = SQLITE_SHM_SHARED;
  CheckedFile* file = MainFileOf(connection);
  if (!file) return false;
  sqlite3_file* real = Real(&file->base);
  if (real->pMethods->xShmLock(real, kWriteLock, 1, SQLITE_SHM_LOCK | kLook) != SQLITE_OK) {
    return false;
  }
  real->pMethods->xShmLock(real, kWriteLock, 1, SQLITE_SHM_UNLOCK | kLook);
  return true;
}

}  // namespace btrieve
