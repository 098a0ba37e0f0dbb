// Begin, End and Abort.
#include "btrieve/files/Intents.h"
#include "btrieve/session/Session.h"

namespace btrieve {
namespace {

std::vector<LoggedRecord> Logged(const Overlay& changes) {
  std::vector<LoggedRecord> records;
  for (const auto& [position, record] : changes.All()) {
    if (record.deleted && !record.inBase) continue;
    records.push_back({position, record.deleted, record.numbers.Stored(), record.data});
  }
  return records;
}

using VersionMap = std::map<uint32_t, uint64_t>;

VersionMap WriteChanges(DataFile& file, const Overlay& changes) {
  RecordWriter writer(file, true);
  VersionMap versions;
  const std::vector<LoggedRecord> records = Logged(changes);
  for (const LoggedRecord& record : records) writer.Clear(record);
  for (const LoggedRecord& record : records) versions[record.position] = writer.Fill(record);
  return versions;
}

// Cursors that stand on a record as the transaction left it go on with the version it got.
void RenumberCursors(CursorTable& cursors, DataFile& file, const Overlay& changes,
                     const VersionMap& versions) {
  cursors.ForEachOn(file, [&](Cursor& cursor) {
    if (cursor.version < kFirstOverlayVersion || cursor.version == kStaleVersion) return;
    const OverlayRecord* record = changes.Find(cursor.position);
    const auto version = versions.find(cursor.position);
    const bool current = record && record->version == cursor.version && version != versions.end();
    cursor.version = current ? version->second : kStaleVersion;
  });
}

void LogChanged(DataFile& coordinator, const RedoPart& part, DataFile& file) {
  if (const Overlay* changes = file.Uncommitted()) {
    for (const LoggedRecord& record : Logged(*changes)) AddRedo(coordinator, part, record);
    return;
  }
  for (const uint32_t position : file.Part().changed) {
    Hit hit;
    const bool deleted = !file.Base().Fetch(position, hit);
    AddRedo(coordinator, part,
            deleted ? LoggedRecord{position, true, {}, {}}
                    : LoggedRecord{position, false, hit.numbers, hit.data});
  }
}

}  // namespace

void Session::Begin(TransactionKind kind, LockRequest readLock, bool retriesWrites) {
  transaction_ = Transaction();
  transaction_.number = NewTransactionNumber();
  transaction_.readLock = readLock;
  transaction_.retriesWrites = retriesWrites;
  transaction_.kind = kind;
  deciding_ = decided_ = false;
}

// What a concurrent transaction has changed in one file, on its way there.
struct Session::Coming {
  explicit Coming(DataFile& changed) : file(changed), changes(std::move(changed.Part().overlay)) {}
  // What did not get there is the transaction's again.
  void GiveBack() noexcept { file.Part().overlay = std::move(changes); }

  DataFile& file;
  std::unique_ptr<Overlay> changes;
  VersionMap versions;
};

// Within a write transaction, which begins here unless the transaction is an exclusive one.
void Session::Write(Coming& coming) {
  DataFile& file = coming.file;
  file.Base().EndWalks();
  if (!file.Part().writes) file.Base().BeginWrite();
  if (!coming.changes) return;
  coming.versions = WriteChanges(file, *coming.changes);
  file.ReturnReserved();
}

void Session::NoteWritten(Coming& coming) {
  Participation& part = coming.file.Part();
  part.writes = false;
  part.intent = false;
  NoteCommit(coming.file);
  if (coming.changes) RenumberCursors(cursors_, coming.file, *coming.changes, coming.versions);
}

// The server that holds the files commits them together. Each is waited for while the others are
// held, so all processes take them in one order.
void Session::CommitElsewhere() {
  std::vector<DataFile*> files;
  for (const auto& file : transaction_.writers) files.push_back(file.get());
  std::ranges::sort(files, {}, [](DataFile* file) { return file->Base().Foreign()->Number(); });
  std::vector<Coming> all;
  all.reserve(files.size());
  try {
    for (DataFile* file : files) Write(all.emplace_back(*file));
    deciding_ = true;
    for (const Coming& coming : all) coming.file.Base().CommitWrite();
  } catch (...) {
    for (Coming& coming : all) {
      coming.file.Base().RollbackWrite();
      coming.GiveBack();
    }
    throw;
  }
  decided_ = true;
  for (Coming& coming : all) NoteWritten(coming);
}

// Writes what the transaction has changed in one file and commits it there. In a file that only
// follows, the intent goes with the same commit.
void Session::CommitOne(DataFile& file) {
  Coming coming(file);
  try {
    Write(coming);
    if (file.Part().intent) RemoveIntent(file, transaction_.number);
    file.Base().CommitWrite();
  } catch (...) {
    file.Base().RollbackWrite();
    coming.GiveBack();
    throw;
  }
  NoteWritten(coming);
}

void Session::TakeOwnerByte(DataFile& file) {
  Participation& part = file.Part();
  if (part.ownerHeld) return;
  part.ownerHeld = file.Locks().Space().TryExclusive(OwnerByteOf(transaction_.number));
  if (!part.ownerHeld) throw Failure{kFileInUse};
}

void Session::AddOwnIntent(DataFile& file) {
  const DataFile& coordinator = *transaction_.writers.front();
  AddIntent(file, {transaction_.number, RelativeTo(file.Path(), coordinator.Path())});
}

void Session::DeclareIntent(DataFile& file) {
  Participation& part = file.Part();
  if (part.intent) return;
  TakeOwnerByte(file);
  file.Base().BeginWrite();
  try {
    AddOwnIntent(file);
  } catch (...) {
    file.Base().RollbackWrite();
    throw;
  }
  file.Base().CommitWrite();
  part.intent = true;
  NoteCommit(file);
}

// From here on others wait for the end instead of taking the file's state for the newest. They hold
// the byte for no longer than a look at it takes.
void Session::TakeSettlerByte(DataFile& file) {
  Participation& part = file.Part();
  if (part.settlerHeld) return;
  const uint64_t byte = SettlerByteOf(transaction_.number);
  const Status status = Retry(true, [&]() -> Status {
    part.settlerHeld = file.Locks().Space().TryExclusive(byte);
    return part.settlerHeld ? kOk : kFileInUse;
  });
  if (status != kOk) throw Failure{status};
}

// Before the coordinator's commit every intent must be where a crash finds it; after it nothing can
// stop the transaction: a follower that cannot be written now is settled by its next user.
void Session::CommitParts() {
  auto& writers = transaction_.writers;
  DataFile& coordinator = *writers.front();
  std::vector<RedoPart> parts;
  for (size_t at = 1; at < writers.size(); ++at) {
    DeclareIntent(*writers[at]);
    if (!writers[at]->MakeStable()) throw Failure{writers[at]->SyncFault()};
    parts.push_back({transaction_.number, RelativeTo(coordinator.Path(), writers[at]->Path())});
  }
  if (!coordinator.Part().writes) {
    coordinator.Base().BeginWrite();
    coordinator.Part().writes = true;
  }
  coordinator.Base().EndWalks();
  for (size_t at = 1; at < writers.size(); ++at) {
    LogChanged(coordinator, parts[at - 1], *writers[at]);
    TakeSettlerByte(*writers[at]);
  }
  deciding_ = true;
  CommitOne(coordinator);
  decided_ = true;
  if (!coordinator.MakeStable()) return;
  for (size_t at = 1; at < writers.size(); ++at) CommitOne(*writers[at]);
  bool stable = true;
  for (size_t at = 1; at < writers.size(); ++at) stable = writers[at]->MakeStable() && stable;
  if (!stable) return;
  coordinator.Base().BeginWrite();
  try {
    for (const RedoPart& part : parts) RemoveRedo(coordinator, part);
  } catch (...) {
    coordinator.Base().RollbackWrite();
    throw;
  }
  coordinator.Base().CommitWrite();
}

void Session::Commit() {
  if (transaction_.broken != kOk) throw Failure{transaction_.broken};
  const auto& writers = transaction_.writers;
  if (!writers.empty() && writers.front()->Base().Foreign()) return CommitElsewhere();
  const bool single = transaction_.writers.size() == 1;
  deciding_ = deciding_ || single;
  if (single) CommitOne(*transaction_.writers.front());
  decided_ = single;
  if (transaction_.writers.size() > 1) CommitParts();
}

// What a concurrent transaction has changed stands in memory until its end, which may therefore be
// tried again once logs have been carried over.
bool Session::MakeRoom() noexcept {
  if (transaction_.kind != TransactionKind::Concurrent) return false;
  bool any = false;
  for (const auto& file : transaction_.writers) {
    file->Base().RollbackWrite();
    file->Part().writes = false;
    any = file->Base().CarryLogOver() || any;
  }
  return any;
}

Status Session::End() {
  std::erase_if(transaction_.writers, [](const std::shared_ptr<DataFile>& file) {
    const Participation& part = file->Part();
    return !part.writes && (!part.overlay || part.overlay->IsEmpty());
  });
  try {
    try {
      Commit();
    } catch (const Failure& failure) {
      if (decided_ || failure.status != kDiskFull || !MakeRoom()) throw;
      Commit();
    }
  } catch (...) {
    if (!decided_) {
      const Status status = CaughtStatus();
      const bool isElsewhere =
          !transaction_.writers.empty() && transaction_.writers.front()->Base().Foreign();
      const bool undone = Abort();
      if (status == kDiskFull) return kDiskFull;
      if (status == kNotActive && isElsewhere) return kNotActive;  // undone, for all that is known
      return undone ? kTransactionNotWritten : kIoError;
    }
  }
  Status fault = kOk;
  for (const auto& file : transaction_.writers) {
    if (file->Base().IsWriting()) file->Base().RollbackWrite();
    file->Part().writes = false;
    if (!file->MakeStable()) fault = file->SyncFault();
  }
  ReleaseParts();
  return fault;
}

// Versions given since are void; where the record itself is gone, so is the cursor's.
void Session::ReviseCursors(DataFile& file, uint64_t committedVersion) {
  cursors_.ForEachOn(file, [&](Cursor& cursor) {
    cursor.walk.End();
    if (cursor.place != Cursor::Place::On || cursor.version <= committedVersion) return;
    Hit hit;
    if (file.Fetch(cursor.position, hit)) {
      cursor.version = kStaleVersion;
    } else {
      cursor.place = Cursor::Place::Gone;
    }
  });
}

// What could not be committed may stand in the log nevertheless. While it cannot be ruled out, the
// intents of other files stay for those who settle them.
bool Session::DecisionIsVoid() noexcept {
  if (!deciding_ || transaction_.writers.front()->Base().Foreign()) return true;
  try {
    MakeDecisionFinal(*transaction_.writers.front());
    return true;
  } catch (...) {
    return false;
  }
}

// Positions that the transaction has given stay given; the rest of what was put aside goes back.
void Session::AbortPart(DataFile& file, bool removeIntent) {
  Participation& part = file.Part();
  const uint32_t next = file.Base().Counts().nextPosition;
  file.Base().RollbackWrite();
  part.writes = false;
  file.Base().EndWalks();
  part.overlay.reset();
  try {
    if (part.firstAhead != 0 || part.intent) {
      file.Base().BeginWrite();
      if (part.firstAhead != 0) file.Base().SetNextPosition(next);
      if (part.intent && removeIntent) RemoveIntent(file, transaction_.number);
      file.Base().CommitWrite();
    }
  } catch (...) {  // the intent goes with the next user's settlement
    file.Base().RollbackWrite();
  }
  try {
    file.Base().EnterRead();
    file.Base().RenewCounts();
    ReviseCursors(file, file.Base().Counts().version);
  } catch (...) {  // then no version is known to be right
    cursors_.ForEachOn(file, [](Cursor& cursor) {
      cursor.walk.End();
      cursor.version = kStaleVersion;
    });
  }
}

bool Session::Abort() {
  auto& writers = transaction_.writers;
  for (const auto& file : writers) {  // which one home undoes together, before anything else there
    if (file->Base().Foreign()) file->Base().RollbackWrite();
  }
  if (!writers.empty()) AbortPart(*writers.front(), false);
  const bool isVoid = DecisionIsVoid();
  for (size_t at = 1; at < writers.size(); ++at) AbortPart(*writers[at], isVoid);
  deciding_ = false;
  ReleaseParts();
  return isVoid;
}

void Session::ReleaseParts() noexcept {
  cursors_.ForEach([](Cursor& cursor) { ReleaseLocks(cursor, true); });
  const auto release = [this](DataFile& file) {
    Participation& part = file.Part();
    for (const uint32_t position : part.held) file.Locks().Drop(position);
    if (part.present) file.Locks().DropPresence();
    LockSpace& space = file.Locks().Space();
    if (part.ownerHeld) space.Release(OwnerByteOf(transaction_.number));
    if (part.settlerHeld) space.Release(SettlerByteOf(transaction_.number));
    file.Locks().DropClaims();
    file.Locks().DropWhole();
    file.Base().EndWalks();
    file.ForgetReserved();
    part = Participation();
  };
  for (const auto& file : transaction_.files) release(*file);
  transaction_ = Transaction();
}

}  // namespace btrieve
