#include "btrieve/session/CopyFiles.h"

#include <algorithm>
#include <thread>

#include "btrieve/pages/CheckedVfs.h"
#include "btrieve/pages/Sqlite.h"
#include "btrieve/session/Session.h"
#include "btrieve/system/DiskSpace.h"
#include "btrieve/system/HostFile.h"

namespace btrieve {
namespace {

using Files = std::vector<std::shared_ptr<DataFile>>;

class Copying {
 public:
  Copying(const std::vector<FileCopy>& copies, size_t& at) : copies_(copies), at_(at) {}
  ~Copying() { session_.CloseAll(); }
  Copying(const Copying&) = delete;
  Copying& operator=(const Copying&) = delete;

  Status Run(std::chrono::milliseconds patience);

 private:
  Status OpenAll();
  Status ReadAtOnce(std::chrono::milliseconds patience);
  Status ReadInTurn();
  bool IsOneState();
  Status SettleCopies();

  Session& session_ = Session::Get();
  std::lock_guard<std::mutex> lock_{session_.Mutex()};
  const std::vector<FileCopy>& copies_;
  size_t& at_;
  Files files_;
  bool standTogether_ = true;  // in one folder
};

Status Copying::OpenAll() {
  for (at_ = 0; at_ < copies_.size(); ++at_) {
    const std::string& path = copies_[at_].from;
    if (IsRemote(path)) return kDirectoryError;
    files_.emplace_back();
    if (const Status status = session_.VisitFile(path, files_.back())) return status;
    if (files_.back()->Base().Link().Get() == nullptr) return kNotABtrieveFile;
    standTogether_ = standTogether_ && DirectoryOf(path) == DirectoryOf(copies_.front().from);
  }
  return kOk;
}

Status Copying::ReadInTurn() {
  for (at_ = 0; at_ < files_.size(); ++at_) {
    files_[at_]->Base().LeaveRead();
    if (const Status status = session_.PrepareRead(*files_[at_], true)) return status;
  }
  return kOk;
}

// What was the newest state of each file when the last one was read still is, so they were so
// together. An intent among them is settled in the copies as it would be after a power cut at that
// moment, by the copy of its coordinator; which must therefore stand beside it.
bool Copying::IsOneState() {
  for (const auto& file : files_) {
    if (!standTogether_ && !session_.IsSettled(*file)) return false;
  }
  return std::ranges::all_of(files_, [](const auto& file) { return file->Base().IsCurrent(); });
}

Status Copying::ReadAtOnce(std::chrono::milliseconds patience) {
  constexpr std::chrono::microseconds kBetweenLooks{300};
  const auto end = Clock::now() + patience;
  while (true) {
    const Status status = ReadInTurn();
    if (status == kOk && IsOneState()) return kOk;
    const bool isPassing = status == kOk || status == kFileInUse || status == kRecordInUse;
    if (!isPassing || Clock::now() >= end) return status == kOk ? Status{kFileInUse} : status;
    std::this_thread::sleep_for(kBetweenLooks);
  }
}

void CopyPages(const Connection& from, const std::string& to) {
  Connection out(SqliteName(to), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  int reserved = kPageSumSize;
  sqlite3_file_control(out.Get(), "main", SQLITE_FCNTL_RESERVE_BYTES, &reserved);
  const std::string way = "PRAGMA page_size=" + std::to_string(kStoragePageSize) +
                          "; PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF";
  out.Run(way.c_str());
  sqlite3_backup* backup = sqlite3_backup_init(out.Get(), "main", from.Get(), "main");
  if (backup == nullptr) ThrowResult(sqlite3_errcode(out.Get()));
  sqlite3_backup_step(backup, -1);
  const int result = sqlite3_backup_finish(backup);
  if (result != SQLITE_OK) ThrowResult(result);
  out.Close();
  if (!SyncFile(to, true)) throw Failure{LastErrorIsDiskFull() ? kDiskFull : kIoError};
}

// As whoever opens them first would.
Status Copying::SettleCopies() {
  files_.clear();
  session_.CloseAll();
  for (at_ = 0; at_ < copies_.size(); ++at_) {
    files_.emplace_back();
    if (const Status status = session_.UseFile(copies_[at_].to, false, files_.back())) {
      return status;
    }
    if (const Status status = session_.PrepareRead(*files_.back(), true)) return status;
  }
  return kOk;
}

Status Copying::Run(std::chrono::milliseconds patience) {
  Status status = OpenAll();
  if (status == kOk) status = ReadAtOnce(patience);
  if (status != kOk) return status;
  for (at_ = 0; at_ < files_.size(); ++at_) CopyPages(files_[at_]->Base().Link(), copies_[at_].to);
  return SettleCopies();
}

}  // namespace

Status CopyFiles(const std::vector<FileCopy>& copies, std::chrono::milliseconds patience,
                 size_t& at) {
  at = 0;
  if (!RegisterCheckedVfs()) return kNoCacheBuffer;
  try {
    return Copying(copies, at).Run(patience);
  } catch (...) {
    return CaughtStatus();
  }
}

}  // namespace btrieve
