// Create: a new file is made aside and put in place whole, so that a crash leaves the old one or
// the new one.
#include "btrieve/Call.h"

namespace btrieve {
namespace {

constexpr int8_t kRefuseExisting = -1;
constexpr int8_t kRename = -127;
constexpr int8_t kDelete = -128;

std::string AsideOf(const std::string& path) {
  return DirectoryOf(path) + "~btr" + std::to_string(ProcessNumber()) + ".tmp";
}

void RemoveWithLogs(const std::string& path) noexcept {
  for (const char* tail : {"", "-wal", "-shm"}) RemoveFile(path + tail);
}

// Removes a data file made aside unless it has been put in place.
class Aside {
 public:
  explicit Aside(const std::string& path) : path_(AsideOf(path)) { RemoveWithLogs(path_); }
  ~Aside() { RemoveWithLogs(path_); }
  Aside(const Aside&) = delete;
  Aside& operator=(const Aside&) = delete;
  const std::string& Path() const noexcept { return path_; }

 private:
  std::string path_;
};

// Keeps everybody out of the file that is to be replaced. 25 while anybody has it open.
Status LockOut(Session& session, const std::string& path, LockSpace& space, HeldByte& gate) {
  if (const Status status = space.Open(path)) return status;
  const Status status = session.Retry(true, [&]() -> Status {
    gate = HeldByte::Exclusive(space, lockbyte::kGate);
    return gate ? kOk : kFileInUse;
  });
  if (status != kOk || !space.TryExclusive(lockbyte::kOpen)) return kCreateError;
  return kOk;
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

}  // namespace

Status MakeFile(Call& call) {
  if (call.keyNumber == kRename || call.keyNumber == kDelete) return kInvalidOperation;
  std::string path;
  if (const Status status = PathFromCaller(call.key, path)) return status;
  FileSpec spec;
  if (const Status status = ParseCreateBlock({call.data, call.room}, spec)) return status;
  bool exists = false;
  if (const Status status = CheckPlace(call, path, exists)) return status;
  LockSpace old;
  HeldByte gate;
  if (exists) {
    if (const Status status = LockOut(call.session, path, old, gate)) return status;
  }
  const Aside aside(path);
  Storage::Create(aside.Path(), spec);
  EmptyLog(path);
  if (!kReplacesOpenFiles) {
    gate.Release();
    old = LockSpace();
  }
  return PutInPlace(aside.Path(), path) ? kOk : kCreateError;
}

}  // namespace btrieve
