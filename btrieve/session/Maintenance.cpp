#include "btrieve/session/Maintenance.h"

#include <condition_variable>
#include <new>
#include <thread>

#include "btrieve/session/Session.h"
#include "btrieve/system/Background.h"

namespace btrieve {
namespace {

constexpr std::chrono::milliseconds kLook{100};
constexpr uint32_t kLooksToASync = 4;
constexpr std::chrono::milliseconds kIdleLook{1000};  // only for what others commit

// All under the session's mutex; never destroyed, as the session is not.
struct Keeper {
  std::condition_variable wake;
  bool running = false;
  bool busy = false;
};

Keeper& TheKeeper() noexcept {
  static union Lasting {
    Lasting() : keeper() {}
    ~Lasting() {}
    Keeper keeper;
  } lasting;
  return lasting.keeper;
}

// Whether anything in the file is left to look after soon.
bool LookAfter(DataFile& file) noexcept {
  Storage& base = file.Base();
  if (ForeignFile* foreign = base.Foreign()) foreign->TakeInNews();
  const bool touched = file.TakeTouched();
  if (base.IsWriting()) return true;
  if (!touched) base.Rest();
  if (base.Carrier().IsBehind() && !base.IsReading()) {
    base.Carrier().TryAgain(base.Link().Get());
  }
  return file.LookAtOthers() || touched || base.Carrier().IsBehind();
}

// Syncing takes its time, so other calls may go on meanwhile; the file may even be closed, which
// waits for its sync. The log is opened by its name.
bool SyncOutside(std::unique_lock<std::mutex>& lock, const std::weak_ptr<DataFile>& entry) {
  std::shared_ptr<DataFile> file = entry.lock();
  if (!file) return false;
  const std::string path =
      file->LogPath();  // before the sync is taken: nothing may fail from then on
  bool entryToo = false;
  const std::shared_ptr<OutsideSync> sync = file->GiveAwaySync(entryToo);
  if (!sync) return false;
  file.reset();
  lock.unlock();
  sync->Finish(SyncFile(path, entryToo));
  lock.lock();
  return true;
}

bool LookAfterAll(Session& session, std::unique_lock<std::mutex>& lock) {
  bool more = false;
  std::vector<std::weak_ptr<DataFile>> files;
  for (const std::shared_ptr<DataFile>& file : session.OpenFiles()) {
    more = LookAfter(*file) || more;
    files.push_back(file);
  }
  for (const auto& file : files) more = SyncOutside(lock, file) || more;
  return more;
}

// False when no file is open any more. Without memory what is left to do waits for the next look:
// there is nobody to tell.
bool Look(Session& session, std::unique_lock<std::mutex>& lock, bool all) noexcept {
  Keeper& keeper = TheKeeper();
  try {
    if (session.OpenFiles().empty()) return false;
    session.LetGoOfLongLogs();
    if (!all && keeper.busy) return true;
    keeper.busy = false;
    if (LookAfterAll(session, lock)) keeper.busy = true;
  } catch (const std::bad_alloc&) {
    keeper.busy = true;
  }
  return true;
}

void Run() {
  Session& session = Session::Get();
  Keeper& keeper = TheKeeper();
  std::unique_lock lock(session.Mutex());
  for (uint32_t looks = 1; true; ++looks) {
    keeper.wake.wait_for(lock, keeper.busy ? kLook : kIdleLook);
    if (!Look(session, lock, looks % kLooksToASync == 0)) break;
  }
  keeper.running = false;
}

// A process that ends in good order leaves nothing to a power cut. Another thread may be inside a
// call, or have been when it was ended.
class AtProcessEnd {
 public:
  AtProcessEnd() = default;
  ~AtProcessEnd() {
    std::unique_lock lock(Session::Get().Mutex(), std::defer_lock);
    const Clock::time_point end = Clock::now() + kLockWait;
    while (!lock.try_lock()) {
      if (ProcessIsEnding() || Clock::now() > end) return;
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    Session::Get().SyncFromNowOn();
  }
  AtProcessEnd(const AtProcessEnd&) = delete;
  AtProcessEnd& operator=(const AtProcessEnd&) = delete;
};
const AtProcessEnd atProcessEnd;

}  // namespace

void WakeMaintenance() noexcept {
  Keeper& keeper = TheKeeper();
  if (keeper.busy && keeper.running) return;
  keeper.busy = true;
  if (keeper.running) {
    keeper.wake.notify_one();
  } else {
    keeper.running = StartThread(Run);
  }
}

}  // namespace btrieve
