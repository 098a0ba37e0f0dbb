#include "btrieve/session/SoleFile.h"

#include "btrieve/pages/CheckedVfs.h"
#include "btrieve/session/Session.h"

namespace btrieve {
namespace {

// As the record manager's own Open does it, with all that is left over.
Status Settle(Session& session, const std::string& path) {
  std::shared_ptr<DataFile> file;
  if (const Status status = session.UseFile(path, true, file)) return status;
  if (file->Base().Foreign()) return kNotABtrieveFile;
  if (const Status status =
          session.Retry(*file, true, [&] { return session.SettleIntents(*file); })) {
    return status;
  }
  return file->MakeAllStable() ? kOk : file->SyncFault();
}

Status OpenAndSettle(const std::string& path) {
  Session& session = Session::Get();
  const std::lock_guard lock(session.Mutex());
  const Status status = Settle(session, path);
  session.CloseAll();
  return status;
}

}  // namespace

Status SoleFile::Open(const std::string& path, std::unique_ptr<SoleFile>& file) {
  if (!RegisterCheckedVfs()) return kNoCacheBuffer;
  try {
    if (const Status status = OpenAndSettle(path)) return status;
    std::unique_ptr<SoleFile> taken(new SoleFile(path));
    if (const Status status = taken->Take()) return status;
    file = std::move(taken);
    return kOk;
  } catch (...) {
    return CaughtStatus();
  }
}

// Somebody may have come in between; what he has left half done is for the next attempt.
Status SoleFile::Take() {
  if (const Status status = space_.Open(path_)) return status;
  gate_ = HeldByte::Exclusive(space_, lockbyte::kGate);
  if (!gate_) return kFileInUse;
  if (!space_.TryExclusive(lockbyte::kOpen)) return kIncompatibleMode;
  FileIdentity now;
  if (const Status status = Identify(path_, now)) return status;
  if (!(now == space_.Identity())) return kFileInUse;
  base_.Open(path_);
  base_.EnterRead();
  return base_.Counts().intents == 0 ? kOk : kFileInUse;
}

Status SoleFile::Rest() {
  base_.Close();
  return SizeOfFile(path_ + "-wal") == 0 ? kOk : kFileInUse;
}

}  // namespace btrieve
