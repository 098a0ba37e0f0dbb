// Begin, End and Abort.
#include "btrieve/Intents.h"
#include "btrieve/Session.h"

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
}

// Writes what the transaction has changed in one file and commits it there. In a file that only
// follows, the intent goes with the same commit.
void Session::CommitOne(DataFile& file) {
  Participation& part = file.Part();
  if (!part.writes) file.Base().BeginWrite();
  const std::unique_ptr<Overlay> changes = std::move(part.overlay);
  VersionMap versions;
  try {
    if (changes) versions = WriteChanges(file, *changes);
    if (changes) file.ReturnReserved();
    if (part.intent) RemoveIntent(file, transaction_.number);
  } catch (...) {
    file.Base().RollbackWrite();
    throw;
  }
  file.Base().CommitWrite();
  part.writes = false;
  part.intent = false;
  NoteCommit(file);
  if (changes) RenumberCursors(cursors_, file, *changes, versions);
}

void Session::DeclareIntent(DataFile& file) {
  Participation& part = file.Part();
  const DataFile& coordinator = *transaction_.writers.front();
  if (part.intent) return;
  if (!file.Locks().Space().TryExclusive(OwnerByteOf(transaction_.number))) {
    throw Failure{kFileInUse};
  }
  part.ownerHeld = true;
  file.Base().BeginWrite();
  try {
    AddIntent(file, {transaction_.number, RelativeTo(file.Path(), coordinator.Path())});
  } catch (...) {
    file.Base().RollbackWrite();
    throw;
  }
  file.Base().CommitWrite();
  part.intent = true;
  NoteCommit(file);
}

// Before the coordinator's commit every intent must be where a crash finds it; after it nothing can
// stop the transaction: a follower that cannot be written now is settled by its next user.
void Session::CommitParts() {
  auto& writers = transaction_.writers;
  DataFile& coordinator = *writers.front();
  std::vector<RedoPart> parts;
  for (size_t at = 1; at < writers.size(); ++at) {
    DeclareIntent(*writers[at]);
    if (!writers[at]->MakeStable()) throw Failure{kIoError};
    parts.push_back({transaction_.number, RelativeTo(coordinator.Path(), writers[at]->Path())});
  }
  if (!coordinator.Part().writes) {
    coordinator.Base().BeginWrite();
    coordinator.Part().writes = true;
  }
  for (size_t at = 1; at < writers.size(); ++at) {
    LogChanged(coordinator, parts[at - 1], *writers[at]);
  }
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

Status Session::End() {
  decided_ = false;
  std::erase_if(transaction_.writers, [](const std::shared_ptr<DataFile>& file) {
    const Participation& part = file->Part();
    return !part.writes && (!part.overlay || part.overlay->IsEmpty());
  });
  const bool single = transaction_.writers.size() == 1;
  try {
    if (transaction_.broken) throw Failure{kTransactionNotWritten};
    if (single) CommitOne(*transaction_.writers.front());
    decided_ = single;
    if (transaction_.writers.size() > 1) CommitParts();
  } catch (const Failure&) {
    if (!decided_) {
      Abort();
      return kTransactionNotWritten;
    }
  }
  bool stable = true;
  for (const auto& file : transaction_.writers) {
    if (file->Base().IsWriting()) file->Base().RollbackWrite();
    file->Part().writes = false;
    stable = file->MakeStable() && stable;
  }
  ReleaseParts();
  return stable ? kOk : kIoError;
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

void Session::Abort() {
  for (const auto& file : transaction_.writers) {
    Participation& part = file->Part();
    if (file->Base().IsWriting()) file->Base().RollbackWrite();
    part.writes = false;
    file->Base().EndWalks();
    part.overlay.reset();
    try {
      if (part.intent) {
        file->Base().BeginWrite();
        RemoveIntent(*file, transaction_.number);
        file->Base().CommitWrite();
      }
      file->Base().EnterRead();
      ReviseCursors(*file, file->Base().Counts().version);
    } catch (const Failure&) {  // the intent goes with the next user's settlement
      file->Base().RollbackWrite();
    }
  }
  ReleaseParts();
}

void Session::ReleaseParts() noexcept {
  cursors_.ForEach([](Cursor& cursor) { ReleaseLocks(cursor, true); });
  const auto release = [this](DataFile& file) {
    Participation& part = file.Part();
    for (const uint32_t position : part.held) file.Locks().Drop(position);
    if (part.present) file.Locks().DropPresence();
    if (part.ownerHeld) file.Locks().Space().Release(OwnerByteOf(transaction_.number));
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
