#include "tools/qrndata/UniqueValues.h"

#include <algorithm>
#include <array>

#include "tools/qrndata/Messages.h"

namespace qrndata {

UniqueValues::UniqueValues(BtrFile& file, const btrieve::FileSpec& spec) : file_(file) {
  for (size_t slot = 0; slot < spec.keys.size(); ++slot) {
    const btrieve::KeySpec& key = spec.keys[slot];
    if (key.AllowsDuplicates()) continue;
    keys_.push_back(
        {slot, static_cast<int8_t>(key.number), btrieve::KeyOrder(spec, key), {}, {}, {}});
    if (key.IsAutoIncrement()) keys_.back().highest = HighestStored(keys_.back());
  }
}

std::string UniqueValues::Ordered(const UniqueKey& key, const Bytes& record) {
  std::array<uint8_t, btrieve::kMaxOrderedSize> ordered{};
  key.order.OrderRecord(record.data(), ordered.data());
  return {ordered.begin(), ordered.begin() + static_cast<ptrdiff_t>(key.order.OrderedSize())};
}

uint64_t UniqueValues::HighestStored(const UniqueKey& key) {
  Bytes record;
  const Status status = file_.GetLast(key.number, record);
  if (status == btrieve::kEndOfFile) return 0;
  Require(status, Say(Message::ReadingRecords, file_.Name()));
  const std::string ordered = Ordered(key, record);
  return key.order.AutoIncrementOf(reinterpret_cast<const uint8_t*>(ordered.data()));
}

bool UniqueValues::IsStored(const UniqueKey& key, const Bytes& record) {
  std::array<uint8_t, btrieve::kMaxKeyLength> value{};
  key.order.CopyKey(record.data(), value.data());
  return file_.FindKey(key.number, value) == btrieve::kOk;
}

// False when the numbers are used up.
bool UniqueValues::GiveNumber(const UniqueKey& key, Bytes& record) {
  if (!key.highest || !key.order.WantsAutoIncrement(record.data())) return true;
  return key.order.PutAutoIncrement(*key.highest + 1, record.data());
}

bool UniqueValues::IsSame(const UniqueKey& key, const Bytes* own, const std::string& ordered) {
  return own != nullptr && !key.order.LeavesOut(own->data()) && Ordered(key, *own) == ordered;
}

void UniqueValues::Leave(UniqueKey& key, const Bytes& own) {
  if (key.order.LeavesOut(own.data())) return;
  const std::string ordered = Ordered(key, own);
  if (key.taken.erase(ordered) == 0) key.freed.insert(ordered);
}

void UniqueValues::Keep(UniqueKey& key, const Bytes& record) {
  if (key.order.LeavesOut(record.data())) return;
  const std::string ordered = Ordered(key, record);
  if (key.highest) {
    const auto* bytes = reinterpret_cast<const uint8_t*>(ordered.data());
    key.highest = std::max(*key.highest, key.order.AutoIncrementOf(bytes));
  }
  key.taken.insert(ordered);
}

std::optional<TakenValue> UniqueValues::Take(Bytes& record, const Bytes* own) {
  for (const UniqueKey& key : keys_) {
    if (own == nullptr && !GiveNumber(key, record)) return TakenValue{key.slot, true};
  }
  for (const UniqueKey& key : keys_) {
    if (key.order.LeavesOut(record.data())) continue;
    const std::string ordered = Ordered(key, record);
    if (IsSame(key, own, ordered)) continue;
    if (key.taken.contains(ordered)) return TakenValue{key.slot, false};
    if (!key.freed.contains(ordered) && IsStored(key, record)) return TakenValue{key.slot, true};
  }
  for (UniqueKey& key : keys_) {
    if (own != nullptr) Leave(key, *own);
    Keep(key, record);
  }
  return std::nullopt;
}

}  // namespace qrndata
