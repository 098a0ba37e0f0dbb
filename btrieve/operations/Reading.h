// What all reads share: finding a record as the client sees the file, locking it where asked, and
// handing it to the caller.
#pragma once

#include "btrieve/operations/Call.h"

namespace btrieve {

// 93 when the cursor holds locks of the other kind.
Status CheckLockKind(const Call& call) noexcept;

// A record's lock on its way to the cursor, which does not keep it unless the record becomes the
// one that was read.
class ComingLock {
 public:
  // Within an Activity. Empty while another process holds the record.
  ComingLock(Call& call, uint32_t position);
  ~ComingLock();
  ComingLock(const ComingLock&) = delete;
  ComingLock& operator=(const ComingLock&) = delete;

  explicit operator bool() const noexcept { return granted_; }
  // This process held the record before, so it cannot have changed.
  bool WasHeld() const noexcept { return wasHeld_; }
  // It is the cursor's now. A single one takes the place of that which the cursor had.
  void Keep();

 private:
  Call& call_;
  uint32_t position_;
  bool wasHeld_;
  bool granted_;
};

// `find` fills a Hit with the record and gives a status; it is called again when the record could
// not be locked at once or has changed meanwhile, and must not move the cursor.
template <class Find>
Status FindRecord(Call& call, Hit& hit, Find find) {
  DataFile& file = call.File();
  if (const Status status = call.session.PrepareRead(file, call.lock.wait)) return status;
  if (call.lock.kind == LockKind::None) return find(hit);
  if (const Status status = CheckLockKind(call)) return status;
  return call.session.Retry(file, call.lock.wait, [&]() -> Status {
    const FileLocks::Activity activity(file.Locks());
    if (const Status status = call.session.SettleIntents(file)) return status;
    if (const Status status = find(hit)) return status;
    if (!activity) return kFileInUse;
    const uint32_t position = hit.position;
    ComingLock lock(call, position);
    if (!lock) return kRecordInUse;
    if (!lock.WasHeld() && !(file.Base().IsCurrent() && call.session.IsSettled(file))) {
      // It may have changed just before the lock: looked at anew it is the same record, locked
      // already, or another one, whose lock is to be taken in place of this one.
      if (const Status status = call.session.SettleIntents(file)) return status;
      if (const Status status = find(hit)) return status;
      if (hit.position != position) return kLookAgain;
    }
    lock.Keep();
    return kOk;
  });
}

// Copies the record into the caller's buffer: 0, or 22 with as much of it as may be placed.
Status PlaceRecord(Call& call, ByteView record) noexcept;
// The record's value in the call's key, where there is a key and a buffer for it.
void PlaceKey(Call& call, ByteView record) noexcept;

// The record becomes the cursor's; it was found by the cursor's walk along the call's key.
Status DeliverAlong(Call& call, const Hit& hit);

// Where the walk from the cursor's place along its key goes on.
Entry BoundAlong(const Cursor& cursor, size_t valueSize, bool forward, bool byValue) noexcept;
// 7 or 8 where the cursor cannot go on along the call's key.
Status CheckAlong(const Call& call) noexcept;

}  // namespace btrieve
