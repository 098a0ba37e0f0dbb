// Reads along a key, and Get Key, which takes all records of a value as one.
#include "btrieve/operations/Reading.h"

namespace btrieve {
namespace {

Status FindFrom(Call& call, bool forward, const Entry& bound, Hit& hit) {
  Walk& walk = call.cursor->walk;
  call.cursor->walkIsHere = false;
  walk.Start(call.File(), call.slot, forward, bound.View());
  return walk.Step(hit) ? kOk : kEndOfFile;
}

// The first record of the value found; a walk backward has come to the last one.
Status FindFirstOfValue(Call& call, Hit& hit) {
  const Entry value(hit.entry.first(call.Key().order.OrderedSize()));
  return FindFrom(call, true, value, hit);
}

Status DeliverKey(Call& call, const Hit& hit) {
  Cursor& cursor = *call.cursor;
  cursor.StandOn(hit, false);
  cursor.StandAlong(call.Key().number, hit.entry.first(call.Key().order.OrderedSize()), true);
  cursor.walkIsHere = false;
  PlaceKey(call, hit.data);
  return kOk;
}

template <class Find>
Status ReadAlong(Call& call, bool forward, Find find) {
  Hit hit;
  const Status status = FindRecord(call, hit, [&](Hit& found) -> Status {
    if (const Status missing = find(found)) return missing;
    return call.getKey && !forward ? FindFirstOfValue(call, found) : kOk;
  });
  if (status != kOk) return status;
  return call.getKey ? DeliverKey(call, hit) : DeliverAlong(call, hit);
}

Entry ValueOfCaller(const Call& call) {
  Entry value;
  call.Key().order.OrderKey(call.key, value.Data());
  value.SetSize(call.Key().order.OrderedSize());
  return value;
}

Status ReadFromValue(Call& call, bool forward, bool behind) {
  const Entry value = ValueOfCaller(call);
  const Entry bound = behind ? BehindValue(value.View()) : value;
  return ReadAlong(call, forward, [&](Hit& hit) { return FindFrom(call, forward, bound, hit); });
}

Status ReadNeighbour(Call& call, bool forward) {
  if (const Status status = CheckAlong(call)) return status;
  Cursor& cursor = *call.cursor;
  return ReadAlong(call, forward, [&](Hit& hit) -> Status {
    if (cursor.walkIsHere && !call.getKey && cursor.walk.IsLive(call.slot, forward)) {
      cursor.walkIsHere = false;
      return cursor.walk.Step(hit) ? kOk : kEndOfFile;
    }
    const size_t valueSize = call.Key().order.OrderedSize();
    return FindFrom(call, forward, BoundAlong(cursor, valueSize, forward, call.getKey), hit);
  });
}

}  // namespace

Status GetEqual(Call& call) {
  const Entry value = ValueOfCaller(call);
  return ReadAlong(call, true, [&](Hit& hit) -> Status {
    if (call.Key().order.AsksForNull(call.key)) return kKeyNotFound;
    const bool found = FindFrom(call, true, value, hit) == kOk &&
                       BytesEqual(hit.entry.first(value.Size()), value.View());
    return found ? kOk : kKeyNotFound;
  });
}

Status GetNext(Call& call) { return ReadNeighbour(call, true); }
Status GetPrevious(Call& call) { return ReadNeighbour(call, false); }
Status GetGreater(Call& call) { return ReadFromValue(call, true, true); }
Status GetGreaterOrEqual(Call& call) { return ReadFromValue(call, true, false); }
Status GetLess(Call& call) { return ReadFromValue(call, false, false); }
Status GetLessOrEqual(Call& call) { return ReadFromValue(call, false, true); }

Status GetFirst(Call& call) {
  return ReadAlong(call, true, [&](Hit& hit) { return FindFrom(call, true, Entry(), hit); });
}

Status GetLast(Call& call) {
  Entry bound;
  bound.Fill(0xFF, call.Key().EntrySize() + 1);
  return ReadAlong(call, false, [&](Hit& hit) { return FindFrom(call, false, bound, hit); });
}

}  // namespace btrieve
