#include "btrieve/storage/Head.h"

#include <algorithm>

#include "btrieve/system/LittleEndian.h"

namespace btrieve {

namespace {
constexpr size_t kFixedSize = 24;

template <class Value>
void Put(uint8_t*& at, Value value) {
  StoreValue(at, value);
  at += sizeof value;
}
template <class Value>
void Take(const uint8_t*& at, Value& value) {
  value = LoadValue<Value>(at);
  at += sizeof value;
}
}  // namespace

void Head::Store(std::vector<uint8_t>& out) const {
  out.resize(kFixedSize + 4 * distinct.size());
  uint8_t* at = out.data();
  Put(at, nextPosition);
  Put(at, records);
  Put(at, version);
  Put(at, updateNumber);
  Put(at, intents);
  for (const uint32_t count : distinct) Put(at, count);
}

bool Head::Load(std::span<const uint8_t> bytes, size_t keys) {
  if (bytes.size() != kFixedSize + 4 * keys) return false;
  const uint8_t* at = bytes.data();
  Take(at, nextPosition);
  Take(at, records);
  Take(at, version);
  Take(at, updateNumber);
  Take(at, intents);
  distinct.resize(keys);
  for (uint32_t& count : distinct) Take(at, count);
  return IsPossible();
}

bool Head::IsPossible() const noexcept {
  const bool hasPosition = nextPosition >= 1 && nextPosition <= kHighestPosition + 1;
  return hasPosition && records < nextPosition &&
         std::ranges::all_of(distinct, [this](uint32_t count) { return count <= records; });
}

}  // namespace btrieve
