// What all reads share: finding a record as the client sees the file, locking it where asked, and
// handing it to the caller.
#pragma once

#include "btrieve/Call.h"

namespace btrieve {

// 93 when the cursor holds locks of the other kind.
Status CheckLockKind(const Call& call) noexcept;
// Locks a record for the cursor, within an Activity. 84 while another process holds it.
[[nodiscard]] Status LockRecord(Call& call, uint32_t position);

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
    const bool held = file.Locks().Holds(position);
    if (const Status status = LockRecord(call, position)) return status;
    if (held || (file.Base().IsCurrent() && call.session.IsSettled(file))) return kOk;
    // It may have changed just before the lock. Looked at anew it is either the same record,
    // locked already, or another one, whose lock then takes this one's place.
    if (const Status status = call.session.SettleIntents(file)) return status;
    if (const Status status = find(hit)) return status;
    return hit.position == position ? kOk : kLookAgain;
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
