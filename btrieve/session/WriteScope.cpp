#include "btrieve/session/WriteScope.h"

#include <algorithm>

namespace btrieve {

WriteScope::WriteScope(Session& session, DataFile& file, uint32_t record, bool wantsBlocks)
    : session_(session), file_(file), kind_(session.Running().kind), lone_{record, wantsBlocks} {
  CheckHome();
  if (!IsLone()) activity_.emplace(file.Locks());
  if (kind_ == TransactionKind::Exclusive) {
    EnterExclusive();
  } else if (IsLone()) {
    blocked_ = file_.Base().BeginLoneWrite(lone_);
    if (blocked_ != kOk) file_.Locks().NoteRefusal(lockbyte::kTransaction, true);
  } else if (!*activity_) {
    blocked_ = kFileInUse;
  } else if (kind_ == TransactionKind::None) {
    EnterPlain();
  } else {
    EnterConcurrent();
  }
  if (blocked_ != kOk) file_.Base().EnterRead();
  file_.Touch();
}

WriteScope::~WriteScope() {
  if (kind_ == TransactionKind::None) file_.Base().RollbackWrite();
  GiveBack();
}

// What is to be there as a whole or not at all has one place that decides it.
void WriteScope::CheckHome() const {
  const auto& writers = session_.Running().writers;
  if (!writers.empty() && writers.front()->Home() != file_.Home()) throw Failure{kNotAllowed};
}

// So that a refused write keeps nobody waiting, and waits itself with no more than it had before.
void WriteScope::GiveBack() noexcept {
  auto& held = file_.Part().held;
  for (; newRecords_ > 0; --newRecords_) {
    file_.Locks().Drop(held.back());
    held.pop_back();
  }
  for (const uint64_t hash : newClaims_) file_.Locks().DropClaim(hash);
}

void WriteScope::EnterPlain() {
  if (!BeginSettled()) Settle();
}

// A write transaction; false, with none open, when something is to be settled first.
bool WriteScope::BeginSettled() {
  file_.Base().BeginWrite();
  bool settled = false;
  try {
    settled = session_.IsSettled(file_);
  } catch (...) {
    file_.Base().RollbackWrite();
    throw;
  }
  if (!settled) file_.Base().RollbackWrite();
  return settled;
}

void WriteScope::Settle() {
  const Status status = session_.SettleIntents(file_);
  unsettled_ = status == kOk ? kLookAgain : status;
}

// The activity stands for the time before the file is taken whole; after that it would be in the
// way of the taking.
void WriteScope::EnterExclusive() {
  activity_->End();
  blocked_ = session_.Occupy(file_);
  Participation& part = file_.Part();
  if (blocked_ != kOk || part.writes) return;
  unsettled_ = session_.SettleIntents(file_);
  if (unsettled_ != kOk) return;
  // A file that could not be opened for writing leads no transaction: others' intents would name
  // it.
  auto& writers = session_.Running().writers;
  const bool follows = !writers.empty();
  session_.TakePart(file_, true);
  try {
    OpenExclusively(follows);
  } catch (...) {
    writers.pop_back();
    throw;
  }
}

// The commit before the transaction's own says what must be known should it not come to its end.
void WriteScope::OpenExclusively(bool follows) {
  if (file_.Base().Foreign()) {
    file_.PutPositionsAside();
    file_.Base().BeginWrite();
    file_.TakePositionsAside();
    file_.Part().writes = true;
    return;
  }
  if (follows) session_.TakeOwnerByte(file_);
  file_.Base().BeginWrite();
  try {
    file_.PutPositionsAside();
    if (follows && !file_.Part().intent) session_.AddOwnIntent(file_);
  } catch (...) {
    file_.Base().RollbackWrite();
    throw;
  }
  file_.Base().CommitWrite();
  file_.Part().intent = file_.Part().intent || follows;
  session_.NoteCommit(file_);
  file_.Base().BeginWrite();
  file_.TakePositionsAside();
  file_.Part().writes = true;
}

void WriteScope::EnterConcurrent() {
  session_.TakePart(file_, false);
  file_.Base().EnterRead();
  if (!session_.IsSettled(file_) || !ReserveForOne()) Settle();
}

// A position for a new record, or a number for each key that an Update moves it in. False when the
// numbers to be taken may be those of a dead process's records.
bool WriteScope::ReserveForOne() {
  const uint32_t count = static_cast<uint32_t>(file_.KeyCount()) + 1;
  if (!file_.HasReserved(count)) {
    if (!BeginSettled()) return false;
    file_.Reserve(count);
  }
  file_.Base().EnterRead();
  return true;
}

Status WriteScope::NewPosition(uint32_t& position) {
  if (IsDirect()) {
    position = file_.NextPosition();
    return position == 0 ? kDiskFull : kOk;
  }
  if (!ReserveForOne()) {
    Settle();
    return unsettled_;
  }
  position = file_.TakeReserved();
  return kOk;
}

Status WriteScope::HoldRecord(uint32_t position) {
  if (kind_ == TransactionKind::Exclusive) return kOk;
  if (IsLone()) {
    if (lone_.recordIsFree) return kOk;
    file_.Locks().NoteRefusal(lockbyte::Record(position));
    return kRecordInUse;
  }
  if (kind_ == TransactionKind::None) {
    HeldByte byte;
    if (!file_.Locks().HoldBriefly(position, byte)) return kRecordInUse;
    brief_.push_back(std::move(byte));
    return kOk;
  }
  auto& held = file_.Part().held;
  if (std::find(held.begin(), held.end(), position) != held.end()) return kOk;
  if (!file_.Locks().Hold(position)) return kRecordInUse;
  held.push_back(position);
  ++newRecords_;
  return kOk;
}

// A value may be claimed again, with another autoincrement beside it.
bool WriteScope::Claim(uint64_t hash) {
  const auto holds = [hash](const HeldByte& byte) { return byte.Holds(lockbyte::Claim(hash)); };
  if (holds(everyValue_) || file_.Locks().HasClaim(hash)) return true;
  if (std::ranges::any_of(brief_, holds)) return true;
  if (kind_ == TransactionKind::Concurrent) {
    if (!file_.Locks().Claim(hash)) return false;
    newClaims_.push_back(hash);
    return true;
  }
  HeldByte byte;
  if (!file_.Locks().ClaimBriefly(hash, byte)) return false;
  brief_.push_back(std::move(byte));
  return true;
}

void WriteScope::ClaimAllKeys() noexcept {
  const auto isUnique = [](const Index& index) { return !index.duplicates; };
  const auto& indexes = file_.Base().Indexes();
  if (kind_ != TransactionKind::None || IsLone() || std::ranges::none_of(indexes, isUnique)) return;
  (void)file_.Locks().ClaimAllBriefly(everyValue_);
}

Status WriteScope::ClaimKeys(const WritePlan& plan, bool now) {
  carried_.assign(static_cast<size_t>(file_.KeyCount()), 0);
  if (kind_ == TransactionKind::Exclusive) return kOk;
  for (int slot = 0; slot < file_.KeyCount(); ++slot) {
    const Index& index = file_.IndexAt(slot);
    if (index.duplicates || !plan.Adds(slot)) continue;
    const uint64_t claim = ClaimOf(index, plan.keys[slot].after);
    if (IsLone() && !now) {
      carried_[slot] = claim;
    } else if (!Claim(claim)) {
      return kRecordInUse;
    }
  }
  return kOk;
}

// What was planned upon was read before the locks that keep it so were had.
Status WriteScope::Recheck(const WritePlan& plan, uint64_t version) {
  const Overlay* changes = file_.Uncommitted();
  const bool isOwn = changes && changes->Find(plan.position);
  if (plan.existed && !isOwn && !file_.Base().IsStill(plan.position, version)) return kLookAgain;
  return Writer().FindTaken(plan) == kOk ? kOk : kLookAgain;
}

Status WriteScope::Confirm(const WritePlan& plan, uint64_t version) {
  if (kind_ == TransactionKind::Exclusive) return kOk;
  if (kind_ == TransactionKind::Concurrent && file_.Base().Foreign()) {
    // Present first: a block of new records is not claimed value by value, but keeps that off.
    if (!BePresent()) return kFileInUse;
    if (const Status status = Recheck(plan, version)) return status;
  } else if (!file_.Base().IsCurrent()) {
    return kLookAgain;
  }
  // Who held a lock that has just been taken may have died with its transaction decided.
  if (!session_.IsSettled(file_)) return kLookAgain;
  if (kind_ == TransactionKind::None) return kOk;
  if (!BePresent()) return kFileInUse;
  session_.TakePart(file_, true);
  return kOk;
}

bool WriteScope::BePresent() noexcept {
  Participation& part = file_.Part();
  part.present = part.present || file_.Locks().AddPresence();
  return part.present;
}

// What fails within an exclusive transaction cannot be undone by itself.
template <class Action>
Status WriteScope::Guarded(Action action) {
  Transaction& running = session_.Running();
  const bool exclusive = kind_ == TransactionKind::Exclusive;
  if (exclusive && running.broken != kOk) throw Failure{running.broken};
  try {
    return action();
  } catch (...) {
    if (exclusive) running.broken = CaughtStatus();
    throw;
  }
}

// Which one was refused is not told; with several the wait may be for another one first.
void WriteScope::NoteClaims() noexcept {
  for (const uint64_t claim : carried_) {
    if (claim != 0) return file_.Locks().NoteRefusal(lockbyte::Claim(claim));
  }
}

Status WriteScope::Carry(const WritePlan& plan, ByteView image, uint64_t& version, bool last) {
  const Status status = Guarded([&] {
    return Writer().Carry(plan, image, version, {IsLone() && last, carried_});
  });
  if (status == kRecordInUse) NoteClaims();
  if (status != kOk) return status;
  newClaims_.clear();
  newRecords_ = 0;
  const bool isLogged = kind_ == TransactionKind::Exclusive && !file_.Base().Foreign();
  if (isLogged && session_.Running().writers.front().get() != &file_) {
    file_.Part().changed.insert(plan.position);
  }
  return kOk;
}

bool WriteScope::TakesBlocks() const noexcept {
  if (unsettled_ != kOk || blocked_ != kOk || !file_.Base().Foreign()) return false;
  return kind_ == TransactionKind::Exclusive || (IsLone() && lone_.takesBlocks);
}

Status WriteScope::CarryBlock(std::span<const WritePlan> plans, std::span<const ByteView> images,
                              uint64_t& version, bool last) {
  return Guarded([&] { return Writer().CarryBlock(plans, images, version, IsLone() && last); });
}

void WriteScope::Commit() {
  if (kind_ != TransactionKind::None) return;
  file_.Base().CommitWrite();
  session_.NoteCommit(file_);
}

}  // namespace btrieve
