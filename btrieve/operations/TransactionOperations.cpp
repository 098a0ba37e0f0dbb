// Begin, End, Abort, Unlock.
#include "btrieve/operations/Call.h"
#include "btrieve/system/LittleEndian.h"

namespace btrieve {
namespace {

void Drop(Cursor& cursor, uint32_t position) {
  cursor.locks.erase(position);
  cursor.file->Locks().Drop(position);
  if (cursor.locks.empty()) cursor.lockKind = LockKind::None;
}

Status UnlockOne(Call& call) {
  if (call.room < sizeof(uint32_t)) return kDataBufferLength;
  const auto position = LoadValue<uint32_t>(call.data);
  Cursor& cursor = *call.cursor;
  if (cursor.lockKind != LockKind::Multiple || !cursor.locks.contains(position)) return kLockError;
  Drop(cursor, position);
  return kOk;
}

}  // namespace

Status BeginTransaction(Call& call) {
  if (call.session.InTransaction()) return kTransactionActive;
  call.session.Begin(call.begins, call.lock, call.retriesWrites);
  return kOk;
}

Status EndTransaction(Call& call) {
  return call.session.InTransaction() ? call.session.End() : Status{kNoTransaction};
}

Status AbortTransaction(Call& call) {
  if (!call.session.InTransaction()) return kNoTransaction;
  call.session.Abort();
  return kOk;
}

// 0 the single lock, -1 the multiple lock on the position in the data buffer, -2 all multiple ones.
Status Unlock(Call& call) {
  Cursor& cursor = *call.cursor;
  if (call.keyNumber == -1) return UnlockOne(call);
  const LockKind wanted = call.keyNumber == -2 ? LockKind::Multiple : LockKind::Single;
  if (cursor.lockKind != wanted) return kLockError;
  Session::ReleaseLocks(cursor, false);
  return kOk;
}

}  // namespace btrieve
