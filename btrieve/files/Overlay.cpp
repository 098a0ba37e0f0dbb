#include "btrieve/files/Overlay.h"

namespace btrieve {

namespace {
Overlay::Bytes Copy(const Entry& entry) { return {entry.View().begin(), entry.View().end()}; }
}  // namespace

const OverlayRecord* Overlay::Find(uint32_t position) const noexcept {
  const auto found = records_.find(position);
  return found == records_.end() ? nullptr : &found->second;
}

void Overlay::Adopt(uint32_t position, OverlayRecord record, const std::vector<Entry>& entries) {
  for (size_t slot = 0; slot < entries.size(); ++slot) {
    if (entries[slot].Size() == 0) continue;
    added_[slot].emplace(Copy(entries[slot]), position);
    hidden_[slot].insert(Copy(entries[slot]));
  }
  records_.emplace(position, std::move(record));
}

void Overlay::AddEntry(int slot, const Entry& entry, uint32_t position) {
  added_[slot].emplace(Copy(entry), position);
}

void Overlay::RemoveEntry(int slot, const Entry& entry) {
  const auto found = added_[slot].find(entry.View());
  if (found != added_[slot].end()) added_[slot].erase(found);
}

}  // namespace btrieve
