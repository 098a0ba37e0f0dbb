// Registered controls in the order of their registration.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace qrn {

// `Entry` has a pointer `Control`, which tells entries apart. The controls are not owned.
template <class Entry>
class EntryList {
 public:
  void Append(Entry entry) {
    entries_.emplace_back(last_ + 1, std::move(entry));
    ++last_;
    ++changes_;
  }

  // The first entry that fits, null for none. Good until the list changes.
  template <class Fits>
  Entry* Find(Fits fits) {
    for (auto& [number, entry] : entries_) {
      if (fits(std::as_const(entry))) return &entry;
    }
    return nullptr;
  }
  template <class Fits>
  const Entry* Find(Fits fits) const {
    return const_cast<EntryList*>(this)->Find(fits);
  }
  template <class Control>
  Entry* FindControl(const Control* control) {
    return Find([control](const Entry& entry) { return entry.Control == control; });
  }

  // False when there is none.
  template <class Control>
  bool Remove(const Control* control) {
    ++changes_;
    return std::erase_if(entries_, [control](const auto& each) {
             return each.second.Control == control;
           }) > 0;
  }

  // Visits what is in the list now. A visit may run handlers that change the list: who has left
  // when its turn comes is passed over, who joins waits for the next walk. The entry given is good
  // until a handler runs.
  template <class Visit>
  void Walk(Visit visit) {
    const uint64_t end = last_;
    for (size_t at = 0; at < entries_.size() && entries_[at].first <= end;) {
      const uint64_t number = entries_[at].first;
      const uint64_t changes = changes_;
      visit(entries_[at].second);
      at = changes == changes_ ? at + 1 : FirstBehind(number);
    }
  }

  size_t size() const noexcept { return entries_.size(); }

 private:
  size_t FirstBehind(uint64_t number) const {
    const auto behind = std::ranges::upper_bound(entries_, number, {}, &Numbered::first);
    return static_cast<size_t>(behind - entries_.begin());
  }

  using Numbered = std::pair<uint64_t, Entry>;  // the number of the registration
  std::vector<Numbered> entries_;               // by number
  uint64_t last_ = 0;
  uint64_t changes_ = 0;
};

}  // namespace qrn
