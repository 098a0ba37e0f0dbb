#include "btrieve/WriteScope.h"

#include <algorithm>

namespace btrieve {

WriteScope::WriteScope(Session& session, DataFile& file)
    : session_(session), file_(file), kind_(session.Running().kind), activity_(file.Locks()) {
  if (kind_ == TransactionKind::Exclusive) {
    EnterExclusive();
  } else if (!activity_) {
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
}

void WriteScope::EnterPlain() {
  file_.Base().BeginWrite();
  if (!session_.HasOrphan(file_)) return;
  file_.Base().RollbackWrite();
  session_.SettleIntents(file_);
  file_.Base().BeginWrite();
}

// The activity stands for the time before the file is taken whole; after that it would be in the
// way of the taking.
void WriteScope::EnterExclusive() {
  activity_.End();
  blocked_ = session_.Occupy(file_);
  Participation& part = file_.Part();
  if (blocked_ != kOk || part.writes) return;
  file_.Base().EnterRead();
  session_.SettleIntents(file_);
  session_.TakePart(file_, true);
  if (session_.Running().writers.front().get() != &file_) session_.DeclareIntent(file_);
  file_.Base().BeginWrite();
  part.writes = true;
}

void WriteScope::EnterConcurrent() {
  session_.TakePart(file_, false);
  ReserveForOne();
  session_.SettleIntents(file_);
}

// A position for a new record, or a number for each key that an Update moves it in.
void WriteScope::ReserveForOne() {
  file_.Reserve(static_cast<uint32_t>(file_.KeyCount()) + 1);
  file_.Base().EnterRead();
}

uint32_t WriteScope::NewPosition() {
  if (IsDirect()) return file_.NextPosition();
  ReserveForOne();
  return file_.TakeReserved();
}

Status WriteScope::HoldRecord(uint32_t position) {
  if (kind_ == TransactionKind::Exclusive) return kOk;
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
  return kOk;
}

bool WriteScope::Claim(uint64_t hash) {
  if (kind_ == TransactionKind::Concurrent) return file_.Locks().Claim(hash);
  HeldByte byte;
  if (!file_.Locks().ClaimBriefly(hash, byte)) return false;
  brief_.push_back(std::move(byte));
  return true;
}

Status WriteScope::ClaimKeys(const WritePlan& plan) {
  if (kind_ == TransactionKind::Exclusive) return kOk;
  for (int slot = 0; slot < file_.KeyCount(); ++slot) {
    const KeyChange& key = plan.keys[slot];
    const Index& index = file_.IndexAt(slot);
    if (index.duplicates || key.after.Size() == 0 || !key.Moves()) continue;
    if (!Claim(ClaimOf(index, key.after))) return kRecordInUse;
  }
  return kOk;
}

Status WriteScope::Confirm() {
  if (kind_ == TransactionKind::None) {
    return !carried_ && session_.HasOrphan(file_) ? kLookAgain : kOk;
  }
  if (kind_ == TransactionKind::Exclusive) return kOk;
  if (!file_.Base().IsCurrent()) return kLookAgain;
  Participation& part = file_.Part();
  if (!part.present && !file_.Locks().AddPresence()) return kFileInUse;
  part.present = true;
  session_.TakePart(file_, true);
  return kOk;
}

uint64_t WriteScope::Carry(const WritePlan& plan, ByteView image) {
  Transaction& running = session_.Running();
  carried_ = true;
  if (kind_ != TransactionKind::Exclusive) return Writer().Carry(plan, image);
  if (running.broken) throw Failure{kIoError};
  if (running.writers.front().get() != &file_) file_.Part().changed.insert(plan.position);
  try {
    return Writer().Carry(plan, image);
  } catch (const Failure&) {
    running.broken = true;
    throw;
  }
}

void WriteScope::Commit() {
  if (kind_ != TransactionKind::None) return;
  file_.Base().CommitWrite();
  session_.NoteCommit(file_);
}

}  // namespace btrieve
