// Finishing what a dead process has left of a transaction over several files. May itself be
// interrupted anywhere: whatever is found is settled the same way again.
#include "btrieve/Intents.h"
#include "btrieve/Session.h"

namespace btrieve {
namespace {

// Which part of the coordinator's redo is this file's; files may have been moved together.
bool FindPart(DataFile& coordinator, DataFile& file, const TransactionNumber& number,
              RedoPart& found) {
  for (const RedoPart& part : ReadRedoParts(coordinator)) {
    FileIdentity identity;
    if (part.number == number &&
        Identify(ResolvedFrom(coordinator.Path(), part.file), identity) == kOk &&
        identity == file.Identity()) {
      found = part;
      return true;
    }
  }
  return false;
}

void ApplyRedo(DataFile& file, DataFile& coordinator, const RedoPart& part) {
  RecordWriter writer(file, true);
  ForEachRedo(coordinator, part, [&](const LoggedRecord& record) { writer.Clear(record); });
  ForEachRedo(coordinator, part, [&](const LoggedRecord& record) { writer.Fill(record); });
}

// What has been carried out need not be told again. Where the coordinator is busy it stays: its
// next user finds that there is no intent left for it.
void ForgetRedo(DataFile& coordinator, const RedoPart& part) {
  if (coordinator.Base().IsWriting()) return;
  try {
    coordinator.Base().BeginWrite();
    RemoveRedo(coordinator, part);
    coordinator.Base().CommitWrite();
  } catch (const Failure&) {
    coordinator.Base().RollbackWrite();
  }
}

bool IsOrphan(DataFile& file, const TransactionNumber& number, HeldByte& owner) {
  owner = HeldByte::Exclusive(file.Locks().Space(), OwnerByteOf(number));
  return static_cast<bool>(owner);
}

}  // namespace

bool Session::HasOrphan(DataFile& file) {
  if (file.Base().Counts().intents == 0) return false;
  for (const Intent& intent : ReadIntents(file)) {
    HeldByte owner;
    if (intent.number != transaction_.number && IsOrphan(file, intent.number, owner)) return true;
  }
  return false;
}

void Session::SettleIntents(DataFile& file) {
  if (file.Base().IsWriting() || file.Base().Counts().intents == 0) return;
  for (const Intent& intent : ReadIntents(file)) {
    if (intent.number == transaction_.number) continue;
    HeldByte owner;
    if (IsOrphan(file, intent.number, owner)) {
      SettleIntent(file, intent.number, intent.coordinator);
    }
  }
  file.Base().EnterRead();
}

// Without its coordinator, or with a coordinator that has not committed, a transaction never was.
void Session::SettleIntent(DataFile& file, const TransactionNumber& number,
                           const std::string& name) {
  const FileLocks::Activity activity(file.Locks());
  if (!activity) return;  // an exclusive transaction, which has settled it for itself
  std::shared_ptr<DataFile> coordinator;
  const Status status = VisitFile(ResolvedFrom(file.Path(), name), coordinator);
  if (status != kOk && status != kFileNotFound) {
    throw Failure{status == kIncompatibleMode ? kFileInUse : status};
  }
  RedoPart part;
  const bool committed = status == kOk && FindPart(*coordinator, file, number, part);
  file.Base().BeginWrite();
  try {
    if (RemoveIntent(file, number)) {
      if (committed) ApplyRedo(file, *coordinator, part);
      file.Base().CommitWrite();
      NoteCommit(file);
    } else {
      file.Base().RollbackWrite();
    }
  } catch (...) {
    file.Base().RollbackWrite();
    throw;
  }
  if (committed && file.MakeStable()) ForgetRedo(*coordinator, part);
}

// Nobody else has the coordinator open, so no transaction that it leads is still on its way.
void Session::FinishRedo(DataFile& file) {
  file.Base().EnterRead();
  for (const RedoPart& part : ReadRedoParts(file)) {
    std::shared_ptr<DataFile> other;
    if (VisitFile(ResolvedFrom(file.Path(), part.file), other) != kOk) continue;
    other->Base().EnterRead();
    SettleIntents(*other);
    bool settled = true;
    for (const Intent& intent : ReadIntents(*other))
      settled = settled && intent.number != part.number;
    if (settled && other->MakeStable()) ForgetRedo(file, part);
  }
  SettleIntents(file);
}

}  // namespace btrieve
