#include "extended/ExResultStore.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "core/Dictionary.h"

namespace qrn {
namespace {

// Puts the whole records of `reply` behind those of the slot.
void AppendRecords(ExResultSlot& slot, std::span<const uint8_t> reply) {
  ExReplyReader reader(reply);
  const std::span<const uint8_t> all = reader.Rest();
  std::vector<size_t> starts;
  for (size_t at = slot.Reply.size(); const auto record = reader.Next();) {
    starts.push_back(at);
    at += kExRecordHead + record->Data.size();
  }
  // Room first: nothing can fail between the two insertions.
  const size_t needed = slot.Records.size() + starts.size();
  if (needed > slot.Records.capacity()) {
    slot.Records.reserve(std::max(needed, 2 * slot.Records.capacity()));
  }
  const size_t size = all.size() - reader.Rest().size();
  slot.Reply.insert(slot.Reply.end(), all.begin(), all.begin() + static_cast<ptrdiff_t>(size));
  slot.Records.insert(slot.Records.end(), starts.begin(), starts.end());
}

struct WatchingStore : ExResultStore {
  WatchingStore() {
    WatchDictionaryEnds(
        [](const DbDictionary& dictionary) noexcept { TheExResults().ForgetTables(dictionary); });
  }
  ~WatchingStore() { WatchDictionaryEnds(nullptr); }
};

}  // namespace

std::optional<ExReplyRecord> ExResultSlot::Record(int32_t location) const {
  if (location < 0 || static_cast<size_t>(location) >= Records.size()) return std::nullopt;
  return ReadExRecord(std::span(Reply).subspan(Records[static_cast<size_t>(location)]));
}

int16_t ExResultStore::Keep(const DbTableInfo& table, const char* fields, const FieldList& plan,
                            std::span<const uint8_t> reply) {
  const auto free = std::find_if(slots_.begin(), slots_.end(),
                                 [](const ExResultSlot& slot) { return !slot.Fields; });
  if (free == slots_.end()) return kNoResult;
  ExResultSlot slot;
  slot.FileId = table.FileId;
  slot.Fields = fields;
  slot.Table = &table;
  slot.Plan = plan.Fields;
  slot.Serial = ++lastSerial_;
  AppendRecords(slot, reply);
  *free = std::move(slot);
  return static_cast<int16_t>(free - slots_.begin());
}

bool ExResultStore::Append(int16_t id, uint32_t serial, std::span<const uint8_t> reply) {
  if (Find(id) == nullptr || Find(id)->Serial != serial) return false;
  AppendRecords(slots_[static_cast<size_t>(id)], reply);
  return true;
}

const ExResultSlot* ExResultStore::Find(int16_t id) const {
  if (id < 0 || id >= kExResultSlots) return nullptr;
  const ExResultSlot& slot = slots_[static_cast<size_t>(id)];
  return slot.Fields ? &slot : nullptr;
}

bool ExResultStore::Free(int16_t id) {
  if (Find(id) == nullptr) return false;
  slots_[static_cast<size_t>(id)] = ExResultSlot{};
  return true;
}

void ExResultStore::Clear() {
  for (ExResultSlot& slot : slots_) slot = ExResultSlot{};
}

void ExResultStore::ForgetTables(const DbDictionary& dictionary) {
  const std::less<const DbTableInfo*> before;
  const DbTableInfo* end = dictionary.Tables + kMaxTables + 1;
  for (ExResultSlot& slot : slots_) {
    if (!before(slot.Table, dictionary.Tables) && before(slot.Table, end)) slot.Table = nullptr;
  }
}

ExResultStore& TheExResults() {
  static WatchingStore store;
  return store;
}

}  // namespace qrn
