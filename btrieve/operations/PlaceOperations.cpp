// Reads by place: positions, and steps in physical order.
#include "btrieve/operations/Reading.h"
#include "btrieve/system/LittleEndian.h"

namespace btrieve {
namespace {

Status FindByPlace(Call& call, bool forward, const Entry& bound, Hit& hit) {
  Cursor& cursor = *call.cursor;
  cursor.walkIsHere = false;
  cursor.walk.Start(call.File(), kPhysicalSlot, forward, bound.View());
  return cursor.walk.Step(hit) ? kOk : kEndOfFile;
}

template <class Find>
Status ReadByPlace(Call& call, Find find) {
  Hit hit;
  if (const Status status = FindRecord(call, hit, find)) return status;
  Cursor& cursor = *call.cursor;
  cursor.StandOn(hit, true);
  cursor.LeaveKey();
  cursor.walkIsHere = true;
  return PlaceRecord(call, hit.data);
}

Status Step(Call& call, bool forward) {
  Cursor& cursor = *call.cursor;
  if (cursor.place == Cursor::Place::BeforeFirst && !forward) return kEndOfFile;
  return ReadByPlace(call, [&](Hit& hit) -> Status {
    if (cursor.walkIsHere && cursor.walk.IsLive(kPhysicalSlot, forward)) {
      cursor.walkIsHere = false;
      return cursor.walk.Step(hit) ? kOk : kEndOfFile;
    }
    Entry bound;
    if (cursor.place != Cursor::Place::BeforeFirst) bound = PositionEntry(cursor.position);
    if (forward && bound.Size() != 0) bound.MoveBehind();
    return FindByPlace(call, forward, bound, hit);
  });
}

uint32_t PositionOfCaller(const Call& call) noexcept { return LoadValue<uint32_t>(call.data); }

Status FindAtPosition(Call& call, uint32_t position, Hit& hit) {
  if (position == 0 || position > kHighestPosition) return kInvalidAddress;
  if (!call.File().Fetch(position, hit)) return kInvalidAddress;
  const bool leftOut = call.slot >= 0 && call.Key().order.LeavesOut(hit.data.data());
  return leftOut ? kNullKeyPath : kOk;
}

}  // namespace

Status StepNext(Call& call) { return Step(call, true); }
Status StepPrevious(Call& call) { return Step(call, false); }

Status StepFirst(Call& call) {
  return ReadByPlace(call, [&](Hit& hit) { return FindByPlace(call, true, Entry(), hit); });
}

Status StepLast(Call& call) {
  const Entry bound = PositionEntry(UINT32_MAX);
  return ReadByPlace(call, [&](Hit& hit) { return FindByPlace(call, false, bound, hit); });
}

Status GetPosition(Call& call) {
  const Cursor& cursor = *call.cursor;
  if (cursor.place != Cursor::Place::On) return kInvalidPositioning;
  if (call.room < sizeof cursor.position) return kDataBufferLength;
  StoreValue(call.data, cursor.position);
  call.ReturnLength(sizeof cursor.position);
  return kOk;
}

Status GetDirect(Call& call) {
  if (call.room < sizeof(uint32_t)) return kDataBufferLength;
  const uint32_t position = PositionOfCaller(call);
  Hit hit;
  const Status found =
      FindRecord(call, hit, [&](Hit& record) { return FindAtPosition(call, position, record); });
  if (found != kOk) return found;
  Cursor& cursor = *call.cursor;
  cursor.StandOn(hit, true);
  cursor.walkIsHere = false;
  if (call.slot >= 0) {
    Entry entry;
    call.File().MakeEntry(call.slot, hit, entry);
    cursor.StandAlong(call.Key().number, entry.View());
  } else {
    cursor.LeaveKey();
  }
  const Status status = PlaceRecord(call, hit.data);
  if (status == kOk) PlaceKey(call, hit.data);
  return status;
}

}  // namespace btrieve
