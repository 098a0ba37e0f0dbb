#include "btrieve/operations/Reading.h"

#include <algorithm>
#include <cstring>

namespace btrieve {

Status CheckLockKind(const Call& call) noexcept {
  const LockKind held = call.cursor->lockKind;
  return held == LockKind::None || held == call.lock.kind ? kOk : kIncompatibleLock;
}

ComingLock::ComingLock(Call& call, uint32_t position)
    : call_(call),
      position_(position),
      wasHeld_(call.File().Locks().Holds(position)),
      granted_(call.File().Locks().Hold(position)) {}

ComingLock::~ComingLock() {
  if (granted_) call_.File().Locks().Drop(position_);
}

void ComingLock::Keep() {
  Cursor& cursor = *call_.cursor;
  // One that the cursor has already is counted once.
  if (cursor.locks.emplace(position_, call_.session.InTransaction()).second) granted_ = false;
  cursor.lockKind = call_.lock.kind;
  if (cursor.lockKind != LockKind::Single) return;
  std::erase_if(cursor.locks, [this](const auto& lock) {
    if (lock.first == position_) return false;
    call_.File().Locks().Drop(lock.first);
    return true;
  });
}

Status PlaceRecord(Call& call, ByteView record) noexcept {
  const size_t least = call.File().Spec().recordLength;
  const size_t placed = call.room < least ? 0 : std::min<size_t>(call.room, record.size());
  if (placed != 0) std::memcpy(call.data, record.data(), placed);
  call.ReturnLength(static_cast<uint32_t>(placed));
  return placed < record.size() ? kDataBufferLength : kOk;
}

void PlaceKey(Call& call, ByteView record) noexcept {
  if (call.slot >= 0 && call.key) call.Key().order.CopyKey(record.data(), call.key);
}

Status DeliverAlong(Call& call, const Hit& hit) {
  Cursor& cursor = *call.cursor;
  cursor.StandOn(hit, true);
  cursor.StandAlong(call.Key().number, hit.entry);
  cursor.walkIsHere = true;
  const Status status = PlaceRecord(call, hit.data);
  if (status == kOk) PlaceKey(call, hit.data);
  return status;
}

Entry BoundAlong(const Cursor& cursor, size_t valueSize, bool forward, bool byValue) noexcept {
  if (cursor.wholeValue || byValue) {
    const ByteView value = cursor.entry.View().first(valueSize);
    return forward ? BehindValue(value) : Entry(value);
  }
  Entry bound = cursor.entry;
  if (forward) bound.MoveBehind();
  return bound;
}

Status CheckAlong(const Call& call) noexcept {
  const Cursor& cursor = *call.cursor;
  if (cursor.along == Cursor::Along::None) return kInvalidPositioning;
  const bool same = cursor.along == Cursor::Along::On && cursor.keyNumber == call.Key().number;
  return same ? kOk : kDifferentKeyNumber;
}

}  // namespace btrieve
