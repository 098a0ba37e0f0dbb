#include "btrieve/Maintenance.h"

#include <condition_variable>

#include "btrieve/Background.h"
#include "btrieve/Session.h"

namespace btrieve {
namespace {

constexpr std::chrono::milliseconds kTick{400};

// All under the session's mutex; never destroyed, as the session is not.
struct Keeper {
  std::condition_variable wake;
  bool running = false;
  bool busy = false;
};

Keeper& TheKeeper() {
  static auto* keeper = new Keeper;
  return *keeper;
}

struct DirtyLog {
  std::shared_ptr<DataFile> file;
  std::string path;
  bool entryToo;
};

// Whether anything is left to look after at the next tick.
bool LookAfter(std::vector<std::shared_ptr<DataFile>>& files, std::vector<DirtyLog>& dirty) {
  bool more = false;
  for (const auto& file : files) {
    if (file->TakeTouched()) {
      more = true;
    } else if (!file->Base().IsWriting()) {
      file->Base().LeaveRead();
    }
    if (file->TakeDirty()) dirty.push_back({file, file->LogPath(), file->LogEntryIsNew()});
  }
  return more || !dirty.empty();
}

// Syncing takes its time, so other calls may go on meanwhile. The log is opened by its name: should
// its last user remove it, it has been synced before.
void SyncOutside(std::unique_lock<std::mutex>& lock, std::vector<DirtyLog>& dirty) {
  for (DirtyLog& log : dirty) {
    lock.unlock();
    const bool done = SyncFile(log.path, log.entryToo);
    lock.lock();
    log.file->NoteSynced(done);
  }
}

void Run() {
  Session& session = Session::Get();
  Keeper& keeper = TheKeeper();
  std::unique_lock lock(session.Mutex());
  while (true) {
    keeper.wake.wait_for(lock, kTick);
    std::vector<std::shared_ptr<DataFile>> files = session.OpenFiles();
    if (files.empty()) break;
    std::vector<DirtyLog> dirty;
    keeper.busy = LookAfter(files, dirty);
    SyncOutside(lock, dirty);
    dirty.clear();
    files.clear();
    while (!keeper.busy && !session.OpenFiles().empty()) keeper.wake.wait(lock);
  }
  keeper.running = false;
}

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
