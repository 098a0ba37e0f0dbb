// Owner names, and keys that come and go while a file has records.
#include "btrieve/operations/Call.h"
#include "btrieve/session/SoleUse.h"
#include "btrieve/storage/OwnerName.h"

namespace btrieve {

// Nobody opens the file while its gate is held, so the shared byte may be exchanged for the
// exclusive one and back.
SoleUse::SoleUse(DataFile& file) : space_(file.Locks().Bytes()) {
  granted_ = file.openExclusively;
  if (granted_) return;
  gate_ = HeldByte::Exclusive(space_, lockbyte::kGate);
  if (!gate_) return;
  lifted_ = true;
  space_.Release(lockbyte::kOpen);
  granted_ = space_.TryExclusive(lockbyte::kOpen);
}

SoleUse::~SoleUse() {
  if (!lifted_) return;
  if (granted_) space_.Release(lockbyte::kOpen);
  (void)space_.TryShared(lockbyte::kOpen);
}

namespace {

template <class Change>
Status ChangeMakeup(Call& call, Change change) {
  DataFile& file = call.File();
  const SoleUse sole(file);
  if (!sole) return kFileInUse;
  Session& session = call.session;
  if (const Status status = session.Retry(true, [&] { return session.SettleIntents(file); })) {
    return status;
  }
  file.Base().BeginWrite();
  Status status = kOk;
  try {
    status = change(file.Base());
    if (status == kOk) file.Base().CommitWrite();
  } catch (...) {
    file.Base().RollbackWrite();
    throw;
  }
  if (status != kOk) {
    file.Base().RollbackWrite();
    return status;
  }
  call.session.NoteCommit(file);
  return kOk;
}

// Of a key buffer whose length callers may leave out.
size_t KeyRoom(const Call& call, size_t most) noexcept {
  return call.keyLength == 0 ? most : std::min<size_t>(call.keyLength, most);
}

// 51 for a name that is none.
Status TakeOwnerName(const Call& call, std::string& name) {
  const size_t longest = call.longName ? kLongOwnerNameSize : kOwnerNameSize;
  name = TextUpToNul({call.data, call.room});
  const std::string again = call.key ? TextUpToNul({call.key, KeyRoom(call, longest + 1)}) : "";
  if (name.size() > longest || TrimmedName(name).empty()) return kOwnerInvalid;
  if (!SameOwnerName(name, again)) return kOwnerInvalid;
  name.resize(longest, ' ');
  return kOk;
}

bool IsMode(int8_t number) noexcept { return number == 0 || number == kReadOnlyWithoutName; }

// The cursors' keys go by number: one that is gone leaves them nothing to go on along, higher ones
// may have moved down.
void RenumberCursors(Call& call, uint8_t dropped, bool renumber) {
  call.session.Cursors().ForEachOn(call.File(), [&](Cursor& cursor) {
    if (cursor.along == Cursor::Along::None) return;
    if (cursor.keyNumber == dropped) return cursor.LeaveKey();
    if (renumber && cursor.keyNumber > dropped) --cursor.keyNumber;
  });
}

}  // namespace

Status SetOwner(Call& call) {
  if (!IsMode(call.keyNumber)) return kNotAllowed;
  if (call.cursor->readOnly) return kAccessDenied;
  if (call.File().Base().ReadOwner().set) return kOwnerAlreadySet;
  std::string name;
  if (const Status status = TakeOwnerName(call, name)) return status;
  const uint8_t mode = static_cast<uint8_t>(call.keyNumber);
  return ChangeMakeup(call, [&](Storage& base) -> Status {
    base.WriteOwner({true, mode, name});
    return kOk;
  });
}

Status ClearOwner(Call& call) {
  if (call.cursor->readOnly) return kAccessDenied;
  return ChangeMakeup(call, [&](Storage& base) -> Status {
    base.WriteOwner({});
    return kOk;
  });
}

Status CreateIndex(Call& call) {
  FileSpec spec = call.File().Spec();
  uint8_t number = 0;
  const Status parsed = AddIndexFromBlock({call.data, call.room}, call.keyNumber, spec, number);
  if (parsed != kOk) return parsed;
  if (call.cursor->readOnly) return kAccessDenied;
  return ChangeMakeup(call, [&](Storage& base) { return base.AddIndex(spec, number); });
}

Status DropIndex(Call& call) {
  const bool renumber = call.keyNumber >= 0;
  const uint8_t number = static_cast<uint8_t>(call.keyNumber) & 0x7F;
  FileSpec spec = call.File().Spec();
  if (!DropKey(spec, number, renumber)) return kInvalidKeyNumber;
  if (call.cursor->readOnly) return kAccessDenied;
  const Status status = ChangeMakeup(call, [&](Storage& base) -> Status {
    base.RemoveIndex(spec, number);
    return kOk;
  });
  if (status == kOk) RenumberCursors(call, number, renumber);
  return status;
}

}  // namespace btrieve
