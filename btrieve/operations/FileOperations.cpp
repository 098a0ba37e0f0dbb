// Open, Close, Create, Stat, and what concerns no file.
#include <algorithm>
#include <cstring>

#include "btrieve/operations/Call.h"
#include "btrieve/operations/StatReply.h"
#include "btrieve/storage/OwnerName.h"

namespace btrieve {
namespace {

struct ModeRow {
  int8_t mode;
  bool readOnly;
  bool exclusive;
};
// Each with its variants for sharing by one and by several engines. Others are as normal.
constexpr ModeRow kModes[] = {
    {BtrModeReadOnly, true, false},
    {BtrModeReadOnly + BtrModeSingleEngine, true, false},
    {BtrModeReadOnly + BtrModeMultiEngine, true, false},
    {BtrModeExclusive, false, true},
    {BtrModeExclusive + BtrModeSingleEngine, false, true},
    {BtrModeExclusive + BtrModeMultiEngine, false, true},
};

ModeRow ModeOf(int8_t number) noexcept {
  for (const ModeRow& row : kModes) {
    if (row.mode == number) return row;
  }
  return {0, false, false};
}

// 51, or what the file lets a client do that has given this name.
Status CheckOwner(DataFile& file, ByteView given, bool& readOnly) {
  const OwnerRecord owner = file.Base().ReadOwner();
  if (!owner.set) return kOk;
  const std::string name = TextUpToNul(given);
  if (owner.isKnown && SameOwnerName(owner.name, name)) return kOk;
  if (!name.empty() || owner.mode != kReadOnlyWithoutName) return kOwnerInvalid;
  readOnly = true;
  return kOk;
}

}  // namespace

Status OpenFile(Call& call) {
  if (!call.block) return kNotOpen;
  std::string path;
  if (const Status status = PathFromCaller(call.key, path)) return status;
  const ModeRow mode = ModeOf(call.keyNumber);
  auto cursor = std::make_unique<Cursor>();
  if (const Status status = call.session.UseFile(path, mode.exclusive, cursor->file)) {
    return status;
  }
  const std::shared_ptr<DataFile> held = cursor->file;  // longer than a cursor that is refused
  DataFile& file = *held;
  if (const Status status =
          call.session.Retry(file, true, [&] { return call.session.SettleIntents(file); })) {
    return status;
  }
  cursor->readOnly = mode.readOnly || file.Base().IsReadOnly();
  if (const Status status = CheckOwner(file, {call.data, call.room}, cursor->readOnly)) {
    return status;
  }
  cursor->exclusive = mode.exclusive;
  ++file.openCursors;
  if (call.session.Cursors().Add(std::move(cursor), call.block)) return kOk;
  --file.openCursors;
  return kHandleTableFull;
}

Status CloseFile(Call& call) {
  call.cursor = nullptr;
  call.session.CloseCursor(call.block);
  return kOk;
}

Status Stat(Call& call) {
  DataFile& file = call.File();
  if (const Status status = call.session.PrepareRead(file, true)) return status;
  file.Base().RenewCounts();
  StatCounts counts;
  counts.records = file.RecordCount();
  for (int slot = 0; slot < file.KeyCount(); ++slot) {
    counts.uniqueValues.push_back(file.DistinctCount(slot));
  }
  uint32_t length = 0;
  const Status status =
      WriteStat(file.Spec(), counts, call.keyNumber, {call.data, call.room}, length);
  call.ReturnLength(length);
  return status;
}

Status Version(Call& call) {
  constexpr uint8_t kBlock[] = {kDefaultFileVersion >> 4, 0, kDefaultFileVersion & 15, 0, 'W'};
  if (call.room < sizeof kBlock) return kDataBufferLength;
  std::memcpy(call.data, kBlock, sizeof kBlock);
  call.ReturnLength(sizeof kBlock);
  return kOk;
}

Status Stop(Call& call) {
  call.session.CloseAll();
  return kOk;
}

// Another client's number cannot be reset from here.
Status Reset(Call& call) {
  if (call.keyNumber == -1) return kNotAllowed;
  call.session.CloseAll();
  return kOk;
}

// Nothing asks for a login here, so any well-formed one is granted.
Status Login(Call& call) {
  if (call.keyNumber == 1) return kOk;
  if (call.keyNumber != 0) return kInvalidOperation;
  if (!call.key) return kWrongUri;
  const std::string uri = TextUpToNul({call.key, 255});
  return uri.starts_with("btrv://") ? kOk : kWrongUri;
}

}  // namespace btrieve
