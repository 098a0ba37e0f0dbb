#include "btrieve/session/Session.h"

#include <algorithm>
#include <new>
#include <thread>

#include "btrieve/session/Maintenance.h"

namespace btrieve {
namespace {

constexpr std::chrono::milliseconds kSyncAfter{500};
constexpr std::chrono::milliseconds kLongestPause{20};
constexpr std::chrono::milliseconds kGrace{8};
constexpr std::chrono::milliseconds kBesideOthers{600};

}  // namespace

Session& Session::Get() {
  static auto* session = new Session;
  return *session;
}

Session::Patience::Patience(Session& session, DataFile* file, bool wait) noexcept
    : session_(session),
      file_(file),
      wait_(wait),
      begin_(Clock::now()),
      end_(begin_ + (wait ? kLockWait : kGrace)) {
  if (file_) file_->Locks().ForgetRefusal();
}

Status Session::Patience::Pause(Status refusal) {
  if (file_ && file_->Base().IsLost()) return kNotActive;
  if (Clock::now() + next_ > end_) return refusal;
  if (IsDeadlocked()) return kDeadlock;
  if (const Status status = AwaitElsewhere(); status != kLookAgain) return status;
  if (file_) file_->Locks().ForgetRefusal();
  session_.SyncIfDue();
  session_.LetGoOfLongLogs();
  std::this_thread::sleep_for(next_);
  next_ = std::min(next_ * 2, kLongestPause);
  return kOk;
}

// At a server, which looks for cycles itself, though only after a second of waiting and with the
// first to give way; so those of this machine have been looked for before. -1 where nobody waits
// there.
Status Session::Patience::AwaitElsewhere() {
  if (!file_ || !wait_ || Clock::now() < begin_ + kBesideOthers) return kLookAgain;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(end_ - Clock::now());
  const LockBytes::Waited waited = file_->Locks().AwaitRefused(left);
  if (waited == LockBytes::Waited::Elsewhere) return kLookAgain;
  file_->Locks().ForgetRefusal();
  return waited == LockBytes::Waited::Deadlock ? kDeadlock : kOk;
}

bool Session::Patience::IsDeadlocked() {
  if (!file_ || !wait_ || Clock::now() < begin_ + kGrace) return false;
  if (!others_) others_.reset(new (std::nothrow) LockWait);
  if (!others_) return false;
  const Obstacle obstacle{file_->Identity(), file_->Locks().Refused()};
  return others_->IsToGiveWay(obstacle, [this](const Obstacle& wanted) {
    const std::shared_ptr<DataFile> file = session_.FindFile(wanted.file);
    return file && file->Locks().KeepsWaiting(wanted.byte);
  });
}

std::shared_ptr<DataFile> Session::FindFile(const FileIdentity& identity) {
  for (const auto& entry : files_) {
    std::shared_ptr<DataFile> file = entry.lock();
    if (file && file->Identity() == identity) return file;
  }
  return nullptr;
}

std::vector<std::shared_ptr<DataFile>> Session::OpenFiles() {
  std::vector<std::shared_ptr<DataFile>> files;
  for (const auto& entry : files_) {
    if (std::shared_ptr<DataFile> file = entry.lock()) files.push_back(std::move(file));
  }
  return files;
}

void Session::Register(const std::shared_ptr<DataFile>& file) {
  std::erase_if(files_, [&](const std::weak_ptr<DataFile>& entry) {
    return entry.expired() || entry.lock() == file;
  });
  files_.push_back(file);
}

void Session::NoteCommit(DataFile& file) noexcept {
  if (file.Base().Foreign()) return;  // whose server has it on stable storage
  file.MarkDirty();
  if (!file.Base().IsWriting()) file.Base().Carrier().AfterCommit(file.Base().Link().Get());
  if (!anyDirty_) dirtySince_ = Clock::now();
  anyDirty_ = true;
  if (syncsEach_) (void)file.MakeStable();
}

void Session::SyncIfDue() noexcept {
  if (!anyDirty_ || Clock::now() < dirtySince_ + kSyncAfter) return;
  SyncAll();
}

void Session::SyncAll() noexcept {
  anyDirty_ = false;
  for (const auto& entry : files_) {
    if (const auto file = entry.lock()) (void)file->MakeStable();
  }
}

void Session::SyncFromNowOn() noexcept {
  syncsEach_ = true;
  SyncAll();
}

void Session::LetGoOfLongLogs() noexcept {
  for (const auto& entry : files_) {
    if (const auto file = entry.lock()) file->LetGoOfLongLog();
  }
}

Status Session::Occupy(DataFile& file) {
  if (file.Locks().HasWhole()) return kOk;
  TakePart(file, false);  // whose end gives the file back
  const Status status = file.Locks().TakeWhole();
  if (status == kOk && file.Base().Foreign()) file.Base().Foreign()->ForgetRead();
  return status;
}

void Session::TakePart(DataFile& file, bool writes) {
  auto& list = writes ? transaction_.writers : transaction_.files;
  const auto isIt = [&](const std::shared_ptr<DataFile>& each) { return each.get() == &file; };
  if (std::none_of(list.begin(), list.end(), isIt)) list.push_back(file.shared_from_this());
}

Status Session::PrepareRead(DataFile& file, bool wait) {
  if (transaction_.kind == TransactionKind::Exclusive && !file.Locks().HasWhole()) {
    if (const Status status = Retry(file, wait, [&] { return Occupy(file); })) return status;
  }
  file.Touch();
  file.Base().EnterRead();
  if (file.Base().Counts().intents == 0) return kOk;
  return Retry(file, wait, [&] { return SettleIntents(file); });
}

void Session::ReleaseLocks(Cursor& cursor, bool ofTransactionOnly) noexcept {
  for (auto lock = cursor.locks.begin(); lock != cursor.locks.end();) {
    if (ofTransactionOnly && !lock->second) {
      ++lock;
      continue;
    }
    cursor.file->Locks().Drop(lock->first);
    lock = cursor.locks.erase(lock);
  }
  if (cursor.locks.empty()) cursor.lockKind = LockKind::None;
}

// The file itself stays open while the transaction needs it.
void Session::CloseCursor(void* block) {
  Cursor* cursor = cursors_.Find(block);
  const std::shared_ptr<DataFile> file = cursor->file;
  ReleaseLocks(*cursor, false);
  --file->openCursors;
  cursors_.Remove(block);
  if (!file->MakeStable()) throw Failure{file->SyncFault()};
}

void Session::CloseAll() {
  if (InTransaction()) Abort();
  cursors_.ForEach([](Cursor& cursor) {
    ReleaseLocks(cursor, false);
    --cursor.file->openCursors;
  });
  Status fault = kOk;
  for (const auto& file : OpenFiles()) {
    if (!file->MakeStable()) fault = file->SyncFault();
  }
  cursors_.Clear();
  WakeMaintenance();
  if (fault != kOk) throw Failure{fault};
}

}  // namespace btrieve
