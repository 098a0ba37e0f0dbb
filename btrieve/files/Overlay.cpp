#include "btrieve/files/Overlay.h"

#include <utility>

namespace btrieve {

namespace {
Overlay::Bytes Copy(const Entry& entry) { return {entry.View().begin(), entry.View().end()}; }
}  // namespace

const OverlayRecord* Overlay::Find(uint32_t position) const noexcept {
  const auto found = records_.find(position);
  return found == records_.end() ? nullptr : &found->second;
}

// Room for all that is to be taken back, before anything is done.
Overlay::Step::Step(Overlay& changes)
    : changes_(changes),
      put_(changes.records_.end()),
      recordChange_(changes.recordChange_),
      distinctChange_(changes.distinctChange_) {
  const size_t keys = changes.added_.size();
  added_.reserve(2 * keys);
  removed_.reserve(keys);
  hidden_.reserve(keys);
}

Overlay::Step::~Step() {
  if (kept_) return;
  for (RemovedEntry& removed : removed_) {
    changes_.added_[removed.slot].insert(std::move(removed.entry));
  }
  for (const AddedEntry& added : added_) changes_.added_[added.slot].erase(added.at);
  for (const HiddenEntry& hidden : hidden_) changes_.hidden_[hidden.slot].erase(hidden.at);
  if (put_ != changes_.records_.end()) changes_.records_.erase(put_);
  if (replaced_) changes_.records_.insert(std::move(replaced_));
  changes_.recordChange_ = recordChange_;
  changes_.distinctChange_.swap(distinctChange_);
}

void Overlay::Step::Adopt(uint32_t position, const std::vector<Entry>& entries) {
  for (size_t at = 0; at < entries.size(); ++at) {
    if (entries[at].Size() == 0) continue;
    const auto slot = static_cast<int>(at);
    AddEntry(slot, entries[at], position);
    const auto [hidden, isNew] = changes_.hidden_[at].insert(Copy(entries[at]));
    if (isNew) hidden_.push_back({slot, hidden});
  }
}

void Overlay::Step::Put(uint32_t position, OverlayRecord&& record) {
  Records fresh;
  fresh.emplace(position, std::move(record));
  replaced_ = changes_.records_.extract(position);
  put_ = changes_.records_.insert(fresh.extract(fresh.begin())).position;
}

void Overlay::Step::AddEntry(int slot, const Entry& entry, uint32_t position) {
  const auto [at, isNew] = changes_.added_[slot].emplace(Copy(entry), position);
  if (isNew) added_.push_back({slot, at});
}

void Overlay::Step::RemoveEntry(int slot, const Entry& entry) noexcept {
  Entries& entries = changes_.added_[slot];
  const auto found = entries.find(entry.View());
  if (found != entries.end()) removed_.push_back({slot, entries.extract(found)});
}

}  // namespace btrieve
