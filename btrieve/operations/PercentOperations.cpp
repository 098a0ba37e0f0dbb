// Get By Percentage and Find Percentage: places in an index in hundredths of a percent, exact.
#include <algorithm>
#include <cstring>

#include "btrieve/files/Ranking.h"
#include "btrieve/operations/Reading.h"
#include "btrieve/system/LittleEndian.h"

namespace btrieve {
namespace {

constexpr uint64_t kWhole = 10000;

uint64_t RoundedShare(uint64_t part, uint64_t whole, uint64_t of) noexcept {
  return (part * of + whole / 2) / whole;
}

uint64_t OrdinalOf(uint64_t percentage, uint64_t total) noexcept {
  return RoundedShare(percentage, kWhole, total - 1);
}
uint64_t PercentageOf(uint64_t ordinal, uint64_t total) noexcept {
  if (ordinal >= total) return kWhole;
  return total == 1 ? 0 : RoundedShare(ordinal, total - 1, kWhole);
}

uint64_t PercentageOfCaller(const Call& call) noexcept {
  const auto value = LoadValue<int16_t>(call.data);
  return static_cast<uint64_t>(std::clamp<int16_t>(value, 0, kWhole));
}

Status CheckPlaceRead(const Call& call) noexcept {
  return call.slot < 0 && call.File().Spec().IsKeyOnly() ? kNotAllowed : kOk;
}

Status FindAtPercentage(Call& call, uint64_t percentage, Hit& hit) {
  DataFile& file = call.File();
  Cursor& cursor = *call.cursor;
  cursor.walkIsHere = false;
  const uint64_t total = TotalEntries(file, call.slot);
  if (total == 0) return kEndOfFile;
  const Entry bound = BoundOf(file, call.slot, OrdinalOf(percentage, total));
  cursor.walk.Start(file, call.slot, true, bound.View());
  return cursor.walk.Step(hit) ? kOk : kEndOfFile;
}

// The cursor's own entry where its value is the one asked for, so that duplicates have places too.
Status BoundOfValue(Call& call, Entry& bound) {
  if (!call.key) return kKeyBufferTooShort;
  call.Key().order.OrderKey(call.key, bound.Data());
  bound.SetSize(call.Key().order.OrderedSize());
  const Cursor& cursor = *call.cursor;
  const bool here = cursor.along == Cursor::Along::On && cursor.keyNumber == call.Key().number &&
                    BytesEqual(cursor.entry.View().first(bound.Size()), bound.View());
  if (here) bound = cursor.entry;
  return kOk;
}

Status BoundOfPosition(Call& call, Entry& bound) {
  if (call.room < sizeof(uint32_t)) return kDataBufferLength;
  const auto position = LoadValue<uint32_t>(call.data);
  if (TotalEntries(call.File(), kPhysicalSlot) == 0) return kEndOfFile;
  Hit hit;
  if (position == 0 || !call.File().Fetch(position, hit)) return kInvalidAddress;
  bound = PositionEntry(position);
  return kOk;
}

void ReturnPercentage(Call& call, uint64_t percentage) noexcept {
  const uint32_t value = static_cast<uint32_t>(percentage);
  const uint32_t size = call.room >= sizeof value ? sizeof value : sizeof(uint16_t);
  std::memcpy(call.data, &value, size);
  call.ReturnLength(size);
}

}  // namespace

Status GetByPercentage(Call& call) {
  if (const Status status = CheckPlaceRead(call)) return status;
  if (call.room < sizeof(uint16_t)) return kDataBufferLength;
  const uint64_t percentage = PercentageOfCaller(call);
  Hit hit;
  const Status found = FindRecord(
      call, hit, [&](Hit& record) { return FindAtPercentage(call, percentage, record); });
  if (found != kOk) return found;
  if (call.slot >= 0) return DeliverAlong(call, hit);
  call.cursor->StandOn(hit, true);
  call.cursor->LeaveKey();
  call.cursor->walkIsHere = true;
  return PlaceRecord(call, hit.data);
}

Status FindPercentage(Call& call) {
  if (const Status status = CheckPlaceRead(call)) return status;
  if (call.room < sizeof(uint16_t)) return kDataBufferLength;
  DataFile& file = call.File();
  if (const Status status = call.session.PrepareRead(file, true)) return status;
  Entry bound;
  const Status status = call.slot >= 0 ? BoundOfValue(call, bound) : BoundOfPosition(call, bound);
  if (status != kOk) return status;
  const uint64_t total = TotalEntries(file, call.slot);
  if (total == 0) return kEndOfFile;
  ReturnPercentage(call, PercentageOf(RankOf(file, call.slot, bound.View()), total));
  return kOk;
}

}  // namespace btrieve
