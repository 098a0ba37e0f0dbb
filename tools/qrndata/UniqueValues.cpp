#include "tools/qrndata/UniqueValues.h"

#include <algorithm>
#include <array>

namespace qrndata {

UniqueValues::UniqueValues(BtrFile& file, const btrieve::FileSpec& spec) : file_(file) {
  for (size_t slot = 0; slot < spec.keys.size(); ++slot) {
    const btrieve::KeySpec& key = spec.keys[slot];
    if (key.AllowsDuplicates()) continue;
    keys_.push_back({slot, static_cast<int8_t>(key.number), btrieve::KeyOrder(spec, key), {}, {}});
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
  Require(status, file_.Name() + ": reading the records");
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

std::optional<TakenValue> UniqueValues::Take(Bytes& record) {
  for (const UniqueKey& key : keys_) {
    if (!GiveNumber(key, record)) return TakenValue{key.slot, true};
  }
  for (const UniqueKey& key : keys_) {
    if (key.order.LeavesOut(record.data())) continue;
    if (IsStored(key, record)) return TakenValue{key.slot, true};
    if (key.taken.contains(Ordered(key, record))) return TakenValue{key.slot, false};
  }
  for (UniqueKey& key : keys_) {
    if (key.order.LeavesOut(record.data())) continue;
    const std::string ordered = Ordered(key, record);
    if (key.highest) {
      const auto* bytes = reinterpret_cast<const uint8_t*>(ordered.data());
      key.highest = std::max(*key.highest, key.order.AutoIncrementOf(bytes));
    }
    key.taken.insert(ordered);
  }
  return std::nullopt;
}

}  // namespace qrndata
