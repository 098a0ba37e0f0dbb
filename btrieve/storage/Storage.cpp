// Opening, closing, transactions and rows of a data file.
#include "btrieve/storage/Storage.h"

#include <algorithm>
#include <cstring>

#include "btrieve/pages/BigEndian.h"
#include "btrieve/pages/LogExam.h"
#include "btrieve/storage/BaseWalk.h"
#include "btrieve/storage/Layout.h"
#include "btrieve/system/HostFile.h"

namespace btrieve {
namespace {

constexpr int kCarryMilliseconds = 200;

// What SQLite takes as "read this file as it stands": it looks for no log and locks nothing.
std::string UnchangingName(const std::string& name) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string uri = name.starts_with('/') ? "file://" : "file:///";
  for (const char c : name) {
    const auto byte = static_cast<uint8_t>(c);
    const bool isPlain = byte == '/' || byte == ':' || byte == '.' ||
                         (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
                         (byte >= 'a' && byte <= 'z');
    if (isPlain) {
      uri.push_back(c);
    } else {
      uri.append({'%', kDigits[byte >> 4], kDigits[byte & 15]});
    }
  }
  return uri + "?immutable=1";
}

void RunOnce(Statement& statement) {
  const InUse use(statement);
  statement.Step();
}

}  // namespace

Index::Index(const FileSpec& file, const KeySpec& key, uint16_t keyId)
    : number(key.number),
      id(keyId),
      duplicates(key.AllowsDuplicates()),
      modifiable(key.IsModifiable()),
      autoIncrement(key.IsAutoIncrement()),
      order(file, key) {}

Storage::~Storage() { Close(); }

bool Storage::IsDataFile(ByteView start) noexcept {
  constexpr char kMagic[] = "SQLite format 3";
  if (start.size() < kStartSize || std::memcmp(start.data(), kMagic, sizeof kMagic) != 0) {
    return false;
  }
  const bool pages =
      start[16] == kStoragePageSize >> 8 && start[17] == 0 && start[20] == kPageSumSize;
  return pages && Big32(&start[68]) == kFileMark && Big32(&start[60]) == kFileFormat;
}

void Storage::Open(const std::string& path, Access access) {
  access_ = access;
  const std::string name = SqliteName(path);
  connection_ = access == Access::Write ? Connection(name, SQLITE_OPEN_READWRITE)
                : access == Access::Read
                    ? Connection(name, SQLITE_OPEN_READONLY)
                    : Connection(UnchangingName(name), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
  sqlite3_busy_timeout(connection_.Get(), kBusyMilliseconds);
  // No row is longer, so a damaged length asks for no memory.
  sqlite3_limit(connection_.Get(), SQLITE_LIMIT_LENGTH, kLongestRow);
  // The page cache has its bound elsewhere; this one is that of the sorting for a new index.
  connection_.Run(
      "PRAGMA synchronous=NORMAL; PRAGMA cache_size=-16384; PRAGMA cell_size_check=ON;"
      "PRAGMA wal_autocheckpoint=0;");
  CheckTables();
  LoadSpecification();
  Prepare();
  LoadHead();
}

void Storage::OpenForeign(std::unique_ptr<ForeignFile> file) {
  head_ = file->Counts();
  access_ = file->IsWritable() ? Access::Write : Access::Unchanging;
  foreign_ = std::move(file);
  TakeForeignSpecification();
}

void Storage::Close() noexcept {
  LeaveRead();
  if (writing_) RollbackWrite();
  indexes_.clear();
  physicalRanks_.reset();
  for (Statement* statement : {&begin_, &beginWrite_, &commit_, &rollback_, &readHead_, &writeHead_,
                               &insertRow_, &updateRow_, &deleteRow_}) {
    *statement = Statement();
  }
  logHead_ = nullptr;
  connection_.Close();
  foreign_.reset();
}

void Storage::Prepare() {
  begin_ = connection_.Prepare("BEGIN");
  beginWrite_ = connection_.Prepare("BEGIN IMMEDIATE");
  commit_ = connection_.Prepare("COMMIT");
  rollback_ = connection_.Prepare("ROLLBACK");
  readHead_ = connection_.Prepare("SELECT n FROM head WHERE id=1");
  writeHead_ = connection_.Prepare("UPDATE head SET n=? WHERE id=1");
  insertRow_ = connection_.Prepare("INSERT INTO rec(pos, ver, num, data) VALUES(?, ?, ?, ?)");
  updateRow_ = connection_.Prepare("UPDATE rec SET ver=?2, num=?3, data=?4 WHERE pos=?1");
  deleteRow_ = connection_.Prepare("DELETE FROM rec WHERE pos=?");
  recordRoot_ = RootOf("rec");
  physicalRanks_ = std::make_unique<RankIndex>(connection_, 0, kPositionEntrySize);
  for (Index& index : indexes_) PrepareIndex(index);
}

// Tables stay where they are made: nothing here moves pages.
uint32_t Storage::RootOf(const std::string& table) {
  Statement read =
      connection_.Prepare("SELECT rootpage FROM sqlite_schema WHERE name='" + table + "'");
  if (!read.Step()) ThrowDamaged();
  return static_cast<uint32_t>(read.Number(0));
}

void Storage::PrepareIndex(Index& index) {
  const std::string table = EntryTable(index.id);
  index.root = RootOf(table);
  index.entries = EntryTree(connection_, index.root, index.EntrySize(), index.order.OrderedSize());
  index.remove = connection_.Prepare("DELETE FROM " + table + " WHERE e=?");
  index.ranks = std::make_unique<RankIndex>(connection_, index.id, index.EntrySize());
}

void Storage::LoadHead() {
  InUse head(readHead_);
  if (!head->Step()) ThrowDamaged();
  const ByteView bytes = head->Bytes(0);
  if (BytesEqual(bytes, knownHead_)) return;
  ForgetCaches();
  if (!head_.Load(bytes, indexes_.size())) ThrowDamaged();
  knownHead_.assign(bytes.begin(), bytes.end());
}

void Storage::ForgetCaches() noexcept {
  if (physicalRanks_) physicalRanks_->Forget();
  for (Index& index : indexes_) {
    index.ranks->Forget();
  }
}

void Storage::NumberSlots() noexcept {
  slots_.fill(-1);
  for (size_t slot = 0; slot < indexes_.size(); ++slot) {
    slots_[indexes_[slot].number] = static_cast<int8_t>(slot);
  }
}

// The copy is made before the state is read: a commit in between only costs one more reading.
void Storage::RememberLogHead() noexcept {
  logHead_ = LogHeadOf(connection_.Get());
  if (!logHead_) return;
  for (size_t word = 0; word < knownLog_.size(); ++word) {
    knownLog_[word] = logHead_[word];
  }
}

bool Storage::NothingCommittedSince() const noexcept {
  if (access_ == Access::Unchanging) return true;
  if (!logHead_) return false;
  for (size_t word = 0; word < knownLog_.size(); ++word) {
    if (logHead_[word] != knownLog_[word]) return false;
  }
  return true;
}

// Read while others may be writing it: what is half of one state and half of another leads to no
// more than a mark of no use.
LogPlace Storage::CommittedPlace() const noexcept {
  const SharedLogHead head = LogHeadOf(connection_.Get());
  if (!head) return {};
  return {head[kLogHeadSalts], static_cast<uint32_t>(head[kLogHeadFrames])};
}

// The write lock keeps everybody from the log meanwhile.
bool Storage::RenewLog(const std::string& logPath) noexcept {
  if (!LogIsDoubtful(connection_.Get())) return true;
  if (HasMoved()) return false;
  const bool within = writing_;
  bool done = false;
  try {
    if (!within) BeginWrite();
    done = WriteLogAgain(logPath, CommittedPlace().frames);
  } catch (...) {  // it stays doubtful
  }
  if (!within) RollbackWrite();
  btrieve::DoubtLog(connection_.Get(), !done);
  return done;
}

bool Storage::CarryLogOver() noexcept {
  if (writing_ || foreign_) return false;
  LeaveRead();
  sqlite3_busy_timeout(connection_.Get(), kCarryMilliseconds);
  const int result = sqlite3_wal_checkpoint_v2(connection_.Get(), "main",
                                               SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr);
  sqlite3_busy_timeout(connection_.Get(), kBusyMilliseconds);
  return result == SQLITE_OK || result == SQLITE_BUSY;  // busy: others still read from the log
}

void Storage::EnterRead() {
  if (writing_) return;
  if (foreign_) return foreign_->Refresh();
  if (IsMarked()) TryRuleOutLostCommit();
  if (snapshot_ && NothingCommittedSince()) return;
  LeaveRead();
  RememberLogHead();
  RunOnce(begin_);
  snapshot_ = true;
  try {
    LoadHead();
  } catch (...) {
    LeaveRead();
    throw;
  }
}

void Storage::LeaveRead() noexcept {
  EndWalks();
  if (!snapshot_) return;
  snapshot_ = false;
  try {
    RunOnce(rollback_);
  } catch (...) {  // nothing was written: there is nothing to lose
  }
}

void Storage::EndWalks() noexcept {
  while (!walks_.empty()) walks_.back()->End();
  records_.Close();
  pages_.Clear();
}

void Storage::AddWalk(BaseWalk& walk) {
  walks_.reserve(kMostWalks);
  if (walks_.size() == kMostWalks) walks_.front()->End();
  walks_.push_back(&walk);
}

void Storage::RemoveWalk(BaseWalk& walk) noexcept { std::erase(walks_, &walk); }

TreeCursor& Storage::Records() {
  if (!records_.IsOpen()) {
    records_.Open(connection_.Get(), TreeCursor::Kind::Rows, recordRoot_, &pages_);
  }
  return records_;
}

// A mark beside a held write lock is that of a commit which is being made.
void Storage::TryRuleOutLostCommit() noexcept {
  if (!WriteLockIsFree(connection_.Get()) || !IsMarked()) return;
  try {
    RuleOutLostCommit();
  } catch (...) {  // no room for a commit, or no right to make one: reading goes on
  }
}

void Storage::RuleOutLostCommit() {
  if (writing_ || !IsMarked()) return;
  BeginWrite();
  RollbackWrite();
}

void Storage::BeginWrite() {
  if (foreign_) return (void)BeginElsewhere(nullptr);
  TakeWriteLock();
  while (IsMarked()) {
    WriteOverLostCommit();
    TakeWriteLock();
  }
}

Status Storage::BeginElsewhere(LoneWrite* lone) {
  const Status status = foreign_->BeginWrite(head_, lone);
  writing_ = status == kOk;
  wrote_ = respecified_ = false;
  return status;
}

Status Storage::BeginLoneWrite(LoneWrite& lone) { return BeginElsewhere(&lone); }

Status Storage::CarryElsewhere(const RowChange& change, const CarryTerms& terms) {
  wrote_ = true;
  return foreign_->Carry(change, head_, terms);
}

Status Storage::CarryBlockElsewhere(std::span<const RowChange> changes, bool commits) {
  wrote_ = true;
  return foreign_->CarryBlock(changes, head_, commits);
}

// Its first page takes the place of the lost commit's first page in the log, and with that the
// checksums of all that follows there do not hold any more.
void Storage::WriteOverLostCommit() {
  ++head_.version;
  wrote_ = true;
  CommitWrite();
}

void Storage::TakeWriteLock() {
  LeaveRead();
  RememberLogHead();
  RunOnce(beginWrite_);
  writing_ = true;
  wrote_ = false;
  respecified_ = false;
  try {
    LoadHead();
  } catch (...) {
    RollbackWrite();
    throw;
  }
}

// What no Open would take is not written.
void Storage::FlushCounts() {
  if (!head_.IsPossible()) ThrowDamaged();
  physicalRanks_->Flush();
  for (Index& index : indexes_) index.ranks->Flush();
  std::vector<uint8_t> bytes;
  head_.Store(bytes);
  if (BytesEqual(bytes, knownHead_)) return;
  InUse write(writeHead_);
  write.Row(ByteView(bytes));
  knownHead_ = bytes;
}

void Storage::CommitWrite() {
  try {
    TryCommit();
  } catch (...) {
    wrote_ = true;
    RollbackWrite();
    throw;
  }
}

void Storage::TryCommit() {
  if (foreign_) {
    foreign_->CommitWrite(head_);
    writing_ = false;
    return;
  }
  std::vector<uint8_t> before = knownHead_;
  try {
    EndWalks();
    FlushCounts();
    MarkCommit(connection_.Get());
    RunOnce(commit_);
    UnmarkCommit(connection_.Get());
    writing_ = false;
  } catch (...) {
    knownHead_.swap(before);
    throw;
  }
}

void Storage::RollbackWrite() noexcept {
  if (!writing_) return;
  EndWalks();
  writing_ = false;
  if (foreign_) {
    foreign_->RollbackWrite();
    if (respecified_) RestoreSpecification();
    return;
  }
  try {
    if (connection_.InTransaction()) RunOnce(rollback_);
  } catch (...) {  // SQLite then undoes it when the connection goes
  }
  if (!wrote_) return;
  if (respecified_) RestoreSpecification();
  ForgetCaches();
  RestoreHead();
}

// Where there is none to go back to, the next read takes it from the file.
void Storage::RestoreHead() noexcept {
  bool known = false;
  try {
    known = head_.Load(knownHead_, indexes_.size());
  } catch (const std::bad_alloc&) {  // the number of keys is another one again
  }
  if (!known) knownHead_.clear();
}

bool Storage::FindRow(uint32_t position, ByteView& row) {
  TreeCursor& records = Records();
  if (!records.SeekRow(position) || records.Row() != position) return false;
  row = records.Payload();
  return true;
}

bool Storage::IsStill(uint32_t position, uint64_t version) {
  if (!foreign_ || writing_) return IsCurrent();
  Hit hit;
  return foreign_->Fetch(position, hit) && hit.version == version;
}

bool Storage::Fetch(uint32_t position, Hit& hit) {
  if (foreign_) return foreign_->Fetch(position, hit);
  ByteView row;
  if (!FindRow(position, row)) return false;
  hit.position = position;
  hit.entry = {};
  TakeRecord(spec_, row, hit);
  return true;
}

uint32_t Storage::FindEntry(int slot, const Entry& from, const Entry& to) {
  if (foreign_) {
    Hit hit;
    const std::unique_ptr<ForeignWalk> walk = foreign_->Walk(slot, true, from.View());
    return walk->Step(hit) && BytesLess(hit.entry, to.View()) ? hit.position : 0;
  }
  const Index& index = indexes_[slot];
  TreeCursor entries;
  entries.Open(connection_.Get(), TreeCursor::Kind::Entries, index.root);
  if (!entries.SeekEntry(from.View())) return 0;
  RowReader row(entries.Payload());
  const ByteView found = row.TakeBytes();
  CheckEntry(found, index.EntrySize());
  return BytesLess(found, to.View()) ? CheckedPosition(row.TakeNumber()) : 0;
}

void Storage::InsertRow(uint32_t position, uint64_t version, ByteView numbers, ByteView data) {
  wrote_ = true;
  InUse insert(insertRow_);
  insert->Bind(1, position);
  insert->Bind(2, static_cast<int64_t>(version));
  insert->Bind(3, numbers);
  insert->Bind(4, data);
  if (!insert->TryInsert()) throw Failure{kIoError};  // a position that was never given away
  physicalRanks_->Count(PositionEntry(position).View(), +1);
}

void Storage::UpdateRow(uint32_t position, uint64_t version, ByteView numbers, ByteView data) {
  wrote_ = true;
  InUse update(updateRow_);
  update.Row(int64_t{position}, static_cast<int64_t>(version), numbers, data);
  if (connection_.Changes() != 1) ThrowDamaged();
}

void Storage::DeleteRow(uint32_t position) {
  wrote_ = true;
  InUse remove(deleteRow_);
  remove.Row(int64_t{position});
  if (connection_.Changes() != 1) ThrowDamaged();
  physicalRanks_->Count(PositionEntry(position).View(), -1);
}

EntryTree::Added Storage::InsertEntry(int slot, const Entry& entry, uint32_t position) {
  Index& index = indexes_[slot];
  const EntryTree::Added added = index.entries.Add(entry.View(), position);
  if (added == EntryTree::Added::Taken) return added;
  wrote_ = true;
  index.ranks->Count(entry.View(), +1);
  return added;
}

void Storage::DeleteEntry(int slot, const Entry& entry) {
  wrote_ = true;
  Index& index = indexes_[slot];
  InUse remove(index.remove);
  remove.Row(entry.View());
  if (connection_.Changes() != 1) ThrowDamaged();
  index.ranks->Count(entry.View(), -1);
}

uint32_t Storage::FindFreePosition() {
  if (foreign_) return foreign_->FindFreePosition();
  uint32_t free = 1;
  Statement rows = connection_.Prepare("SELECT pos FROM rec ORDER BY pos");
  for (; rows.Step(); ++free) {
    const uint32_t position = CheckedPosition(rows.Number(0));
    if (position < free) ThrowDamaged();
    if (position > free) break;
  }
  return free <= kHighestPosition ? free : 0;
}

}  // namespace btrieve
