#include "btrieve/pages/CheckedVfs.h"

#include <algorithm>
#include <bit>
#include <cstdio>
#include <cstring>
#include <utility>

#include "btrieve/pages/LogFormat.h"
#include "btrieve/pages/PageCache.h"
#include "btrieve/pages/PassThrough.h"
#include "btrieve/pages/SystemVfs.h"
#include "btrieve/sqlite/SqlitePages.h"
#include "btrieve/system/DiskSpace.h"
#include "btrieve/system/HostFile.h"
#include "btrieve/system/LittleEndian.h"

namespace btrieve {
namespace {

struct CheckedFile {
  sqlite3_file base;
  bool isData;
  bool isLog;
  bool isDoubtful;   // a log whose sync has failed
  const char* name;  // SQLite keeps it as long as the file is open
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

using Layer = PassThrough<CheckedFile>;

sqlite3_file* Real(sqlite3_file* file) noexcept { return Layer::Below(file); }
CheckedFile* Ours(sqlite3_file* file) noexcept { return reinterpret_cast<CheckedFile*>(file); }

bool IsWholePage(const CheckedFile* file, int amount, sqlite3_int64 offset) noexcept {
  return file->isData && amount == static_cast<int>(kStoragePageSize) &&
         offset % static_cast<int>(kStoragePageSize) == 0;
}
uint64_t PageAt(sqlite3_int64 offset) noexcept {
  return static_cast<uint64_t>(offset) / kStoragePageSize + 1;
}

// SQLite says of some writes only that they failed for want of room.
template <class Action>
int Told(Action action) {
  ForgetLastError();
  const int result = action();
  return result != SQLITE_OK && LastErrorIsDiskFull() ? SQLITE_FULL : result;
}

sqlite3_int64 PlaceInLog(uint64_t offset) noexcept {
  return static_cast<sqlite3_int64>(offset) + static_cast<sqlite3_int64>(kLogHeadSize);
}

int ReadLogBytes(sqlite3_file* file, std::span<uint8_t> out, uint64_t offset) {
  const int result = Real(file)->pMethods->xRead(Real(file), out.data(),
                                                 static_cast<int>(out.size()), PlaceInLog(offset));
  if (result == SQLITE_OK) MaskLog(out, offset);
  return result;
}

// A page is read together with the head of its frame, which says what page it is. Frames read
// whole are checked by SQLite.
int ReadLog(sqlite3_file* file, std::span<uint8_t> out, uint64_t offset) {
  const bool isPage = out.size() == kStoragePageSize && offset > kLogHeaderSize &&
                      (offset - kLogHeaderSize) % kFrameSize == kFrameHeaderSize;
  if (!isPage) return ReadLogBytes(file, out, offset);
  alignas(8) uint8_t frame[kFrameSize];
  const int result = ReadLogBytes(file, frame, offset - kFrameHeaderSize);
  if (result == SQLITE_IOERR_SHORT_READ) return SQLITE_IOERR_READ;
  if (result != SQLITE_OK) return result;
  if (!PageIsSound(frame + kFrameHeaderSize, FramePage(frame))) return SQLITE_IOERR_DATA;
  std::memcpy(out.data(), frame + kFrameHeaderSize, out.size());
  return SQLITE_OK;
}

int WriteLogBytes(sqlite3_file* file, std::span<const uint8_t> bytes, uint64_t offset) {
  uint8_t masked[kStoragePageSize];
  for (size_t done = 0; done < bytes.size();) {
    const size_t part = std::min(sizeof masked, bytes.size() - done);
    std::memcpy(masked, &bytes[done], part);
    MaskLog({masked, part}, offset + done);
    const auto at = PlaceInLog(offset + done);
    const int result = Told([&] {
      return Real(file)->pMethods->xWrite(Real(file), masked, static_cast<int>(part), at);
    });
    if (result != SQLITE_OK) return result;
    done += part;
  }
  return SQLITE_OK;
}

int WriteMark(sqlite3_file* file, const LogPlace& place) {
  const auto mark = StoreLogMark(place);
  return Told(
      [&] { return Real(file)->pMethods->xWrite(Real(file), mark.data(), mark.size(), 0); });
}

// The header begins the log anew. What stood there must be gone before anything follows it, or the
// end of what follows could not be told; SQLite brings both to stable storage before it goes on.
int BeginLog(sqlite3_file* file) {
  if (const int result = Real(file)->pMethods->xTruncate(Real(file), kLogHeadSize)) return result;
  Ours(file)->isDoubtful = false;
  return WriteMark(file, {});
}

int WriteLog(sqlite3_file* file, std::span<const uint8_t> bytes, uint64_t offset) {
  if (offset == 0) {
    if (const int result = BeginLog(file)) return result;
  }
  return WriteLogBytes(file, bytes, offset);
}

int Read(sqlite3_file* file, void* buffer, int amount, sqlite3_int64 offset) {
  if (Ours(file)->isLog) {
    return ReadLog(file, {static_cast<uint8_t*>(buffer), static_cast<size_t>(amount)},
                   static_cast<uint64_t>(offset));
  }
  const int result = Real(file)->pMethods->xRead(Real(file), buffer, amount, offset);
  if (!IsWholePage(Ours(file), amount, offset)) return result;
  // A page that should be there and is not would pass for one of zeros.
  if (result == SQLITE_IOERR_SHORT_READ) return SQLITE_IOERR_READ;
  if (result != SQLITE_OK) return result;
  const bool sound = PageIsSound(static_cast<const uint8_t*>(buffer), PageAt(offset));
  return sound ? SQLITE_OK : SQLITE_IOERR_DATA;
}

int WriteRaw(sqlite3_file* file, const void* buffer, int amount, sqlite3_int64 offset) {
  return Told([&] { return Real(file)->pMethods->xWrite(Real(file), buffer, amount, offset); });
}

// Pages come from the log, with the checksum they got on their way there; while a file is made,
// before it has a log, they get it here.
int Write(sqlite3_file* file, const void* buffer, int amount, sqlite3_int64 offset) {
  if (Ours(file)->isLog) {
    return WriteLog(file, {static_cast<const uint8_t*>(buffer), static_cast<size_t>(amount)},
                    static_cast<uint64_t>(offset));
  }
  if (!IsWholePage(Ours(file), amount, offset)) return WriteRaw(file, buffer, amount, offset);
  if (Ours(file)->logHead) {
    const bool sound = PageIsSound(static_cast<const uint8_t*>(buffer), PageAt(offset));
    return sound ? WriteRaw(file, buffer, amount, offset) : SQLITE_IOERR_DATA;
  }
  alignas(8) uint8_t page[kStoragePageSize];
  std::memcpy(page, buffer, sizeof page);
  SealPage(page, PageAt(offset));
  return WriteRaw(file, page, amount, offset);
}

int Truncate(sqlite3_file* file, sqlite3_int64 size) {
  const sqlite3_int64 head = Ours(file)->isLog && size != 0 ? kLogHeadSize : 0;
  return Told([&] { return Real(file)->pMethods->xTruncate(Real(file), head + size); });
}
// Nothing is carried over from a log that a success could not vouch for.
int Sync(sqlite3_file* file, int flags) {
  CheckedFile& ours = *Ours(file);
  if (ours.isDoubtful) return SQLITE_IOERR_FSYNC;
  const int result = Told([&] { return Real(file)->pMethods->xSync(Real(file), flags); });
  ours.isDoubtful = ours.isLog && result != SQLITE_OK;
  return result;
}
int FileSize(sqlite3_file* file, sqlite3_int64* size) {
  const int result = Real(file)->pMethods->xFileSize(Real(file), size);
  if (result == SQLITE_OK && Ours(file)->isLog) {
    *size = std::max<sqlite3_int64>(*size - static_cast<sqlite3_int64>(kLogHeadSize), 0);
  }
  return result;
}
// Not by parts of pages, which no checksum stands for.
int DeviceCharacteristics(sqlite3_file* file) {
  return Real(file)->pMethods->xDeviceCharacteristics(Real(file)) & ~SQLITE_IOCAP_SUBPAGE_READ;
}

bool SharedFindsNoRoom(const char* name) noexcept {
  char path[kMaxPathLength + sizeof "-shm"];
  const int size = std::snprintf(path, sizeof path, "%s-shm", name);
  return size > 0 && static_cast<size_t>(size) < sizeof path && DiskIsTooFullFor(path);
}

int ShmMap(sqlite3_file* file, int region, int size, int extend, void volatile** memory) {
  int result =
      Told([&] { return Real(file)->pMethods->xShmMap(Real(file), region, size, extend, memory); });
  if ((result & 0xFF) == SQLITE_CANTOPEN && SharedFindsNoRoom(Ours(file)->name))
    result = SQLITE_FULL;
  if (region == 0) {
    const bool mapped = result == SQLITE_OK || result == SQLITE_READONLY;
    Ours(file)->logHead = mapped ? static_cast<SharedLogHead>(*memory) : nullptr;
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
int ShmUnmap(sqlite3_file* file, int remove) {
  Ours(file)->logHead = nullptr;
  return Real(file)->pMethods->xShmUnmap(Real(file), remove);
}

constexpr sqlite3_io_methods kMethods = [] {
  sqlite3_io_methods methods = Layer::Methods();
  methods.xRead = Read;
  methods.xWrite = Write;
  methods.xTruncate = Truncate;
  methods.xSync = Sync;
  methods.xFileSize = FileSize;
  methods.xDeviceCharacteristics = DeviceCharacteristics;
  methods.xShmMap = ShmMap;
  methods.xShmLock = ShmLock;
  methods.xShmUnmap = ShmUnmap;
  return methods;
}();

sqlite3_vfs* System() noexcept { return sqlite3_vfs_find(nullptr); }

int Open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
  int result = Told([&] { return Layer::Open(System(), name, file, flags, outFlags); });
  CheckedFile* ours = Ours(file);
  ours->isData = (flags & SQLITE_OPEN_MAIN_DB) != 0;
  ours->isLog = (flags & SQLITE_OPEN_WAL) != 0;
  ours->name = name;
  const bool missing = (result & 0xFF) == SQLITE_CANTOPEN && (flags & SQLITE_OPEN_CREATE) != 0;
  if (missing && DiskIsTooFullFor(name)) result = SQLITE_FULL;
  if (Real(file)->pMethods) ours->base.pMethods = &kMethods;
  return result;
}

bool Register() noexcept {
  if (!UseSharedPageCache() || sqlite3_initialize() != SQLITE_OK || !System()) return false;
  if (!SetUpSystemVfs()) return false;
  static sqlite3_vfs vfs = Layer::Over(*System(), "btrieve");
  vfs.xOpen = Open;
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
  return LoadValue<uint64_t>(page + kStoragePageSize - kPageSumSize) == PageSum(page, number);
}

void SealPage(uint8_t* page, uint64_t number) noexcept {
  StoreValue(page + kStoragePageSize - kPageSumSize, PageSum(page, number));
}

namespace {

// Null where it is not one of this layer's, and without a connection.
CheckedFile* FileOf(sqlite3* connection, int which) noexcept {
  sqlite3_file* file = nullptr;
  if (!connection) return nullptr;
  sqlite3_file_control(connection, "main", which, &file);
  return file && file->pMethods == &kMethods ? Ours(file) : nullptr;
}
CheckedFile* MainFileOf(sqlite3* connection) noexcept {
  return FileOf(connection, SQLITE_FCNTL_FILE_POINTER);
}
CheckedFile* LogFileOf(sqlite3* connection) noexcept {
  CheckedFile* file = FileOf(connection, SQLITE_FCNTL_JOURNAL_POINTER);
  return file && file->isLog ? file : nullptr;
}

}  // namespace

void MarkLog(sqlite3* connection, const LogPlace& synced) noexcept {
  if (CheckedFile* log = LogFileOf(connection)) (void)WriteMark(&log->base, synced);
}

bool HasMoved(sqlite3* connection) noexcept {
  int moved = 0;
  if (!connection) return false;
  sqlite3_file_control(connection, "main", SQLITE_FCNTL_HAS_MOVED, &moved);
  return moved != 0;
}

bool SyncOpenLog(sqlite3* connection) noexcept {
  CheckedFile* log = LogFileOf(connection);
  if (!log) return false;
  sqlite3_file* real = Real(&log->base);
  return Told([&] { return real->pMethods->xSync(real, SQLITE_SYNC_NORMAL); }) == SQLITE_OK;
}

void DoubtLog(sqlite3* connection, bool doubtful) noexcept {
  if (CheckedFile* log = LogFileOf(connection)) log->isDoubtful = doubtful;
}

bool LogIsDoubtful(sqlite3* connection) noexcept {
  const CheckedFile* log = LogFileOf(connection);
  return log && log->isDoubtful;
}

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

static_assert(kSealSize == btrieve::kPageSumSize);

extern "C" void sqlite_seal_page(void* page, unsigned number) {
  btrieve::SealPage(static_cast<uint8_t*>(page), number);
}
