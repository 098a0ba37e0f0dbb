// Finishing what a dead process has left of a transaction over several files. May itself be
// interrupted anywhere: whatever is found is settled the same way again.
#include <algorithm>

#include "btrieve/files/Intents.h"
#include "btrieve/session/Session.h"

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
  const FileLocks::Activity activity(coordinator.Locks());
  if (!activity || coordinator.Base().IsWriting()) return;
  try {
    coordinator.Base().BeginWrite();
    RemoveRedo(coordinator, part);
    coordinator.Base().CommitWrite();
  } catch (...) {
    coordinator.Base().RollbackWrite();
  }
}

// Where a transaction stands that has an intent in a file.
enum class Standing : uint8_t {
  Undecided,     // its process lives and has not come to its end: the intent tells nothing yet
  BeingSettled,  // by its own process, or by one that found it dead
  Dead,          // and ours to settle, for as long as the two bytes are held
};

struct Hold {
  HeldByte settler;
  HeldByte owner;
};

Standing StandingOf(DataFile& file, const TransactionNumber& number, Hold& hold) {
  LockSpace& space = file.Locks().Space();
  hold.settler = HeldByte::Exclusive(space, SettlerByteOf(number));
  if (!hold.settler) return Standing::BeingSettled;
  hold.owner = HeldByte::Exclusive(space, OwnerByteOf(number));
  return hold.owner ? Standing::Dead : Standing::Undecided;
}

}  // namespace

void MakeDecisionFinal(DataFile& coordinator) {
  coordinator.Base().RuleOutLostCommit();
  coordinator.Base().EnterRead();
  if (!coordinator.MakeAllStable()) throw Failure{kIoError};
}

bool Session::IsSettled(DataFile& file) {
  if (file.Base().Counts().intents == 0) return true;
  for (const Intent& intent : ReadIntents(file)) {
    Hold hold;
    if (intent.number == transaction_.number) continue;
    if (StandingOf(file, intent.number, hold) != Standing::Undecided) return false;
  }
  return true;
}

Status Session::SettleIntents(DataFile& file) {
  file.Base().EnterRead();
  if (file.Base().IsWriting() || file.Base().Counts().intents == 0) return kOk;
  for (const Intent& intent : ReadIntents(file)) {
    Hold hold;
    if (intent.number == transaction_.number) continue;
    const Standing standing = StandingOf(file, intent.number, hold);
    if (standing == Standing::BeingSettled) return kFileInUse;
    if (standing == Standing::Undecided) continue;
    if (const Status status = SettleIntent(file, intent.number, intent.coordinator)) return status;
  }
  file.Base().EnterRead();
  return kOk;
}

// Without its coordinator, or with a coordinator that has not committed, a transaction never was. A
// file that another record manager made has coordinated none of ours, nor has a link to a server.
Status Session::SettleIntent(DataFile& file, const TransactionNumber& number,
                             const std::string& name) {
  const FileLocks::Activity activity(file.Locks());
  if (!activity) return kFileInUse;  // an exclusive transaction, which settles it for itself
  std::shared_ptr<DataFile> coordinator;
  const Status status = VisitFile(ResolvedFrom(file.Path(), name), coordinator);
  if (status != kOk && status != kFileNotFound) {
    throw Failure{status == kIncompatibleMode ? kFileInUse : status};
  }
  RedoPart part;
  const bool isOurs = status == kOk && !coordinator->Base().Foreign();
  if (isOurs) MakeDecisionFinal(*coordinator);
  const bool committed = isOurs && FindPart(*coordinator, file, number, part);
  file.Base().BeginWrite();
  try {
    if (RemoveIntent(file, number) && committed) ApplyRedo(file, *coordinator, part);
    file.Base().CommitWrite();
    NoteCommit(file);
  } catch (...) {
    file.Base().RollbackWrite();
    throw;
  }
  if (committed && file.MakeAllStable()) ForgetRedo(*coordinator, part);
  return kOk;
}

// Nobody else has had the coordinator open, so the transactions whose redo it holds are over. What
// they are to other files may be there already, and not yet on stable storage.
void Session::FinishRedo(DataFile& file) {
  file.Base().EnterRead();
  for (const RedoPart& part : ReadRedoParts(file)) {
    try {
      FinishPart(file, part);
    } catch (...) {  // the other file is at fault, and this one keeps what to tell it
    }
  }
}

void Session::FinishPart(DataFile& file, const RedoPart& part) {
  std::shared_ptr<DataFile> other;
  if (VisitFile(ResolvedFrom(file.Path(), part.file), other) != kOk) return;
  if (SettleIntents(*other) != kOk) return;
  const std::vector<Intent> left = ReadIntents(*other);
  const bool settled = std::none_of(
      left.begin(), left.end(), [&](const Intent& intent) { return intent.number == part.number; });
  if (settled && other->MakeAllStable()) ForgetRedo(file, part);
}

}  // namespace btrieve
