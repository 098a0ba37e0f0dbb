// Registered controls in the order of their registration.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <map>
#include <utility>

namespace qrn {

// `Entry` has a pointer `Control`, which tells entries apart. The controls are not owned.
template <class Entry>
class EntryList {
 public:
  void Append(Entry entry) {
    entries_.emplace_hint(entries_.end(), last_ + 1, std::move(entry));
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
    for (auto each = entries_.begin(); each != entries_.end() && each->first <= end;) {
      const uint64_t number = each->first;
      const uint64_t changes = changes_;
      visit(each->second);
      each = changes == changes_ ? std::next(each) : entries_.upper_bound(number);
    }
  }

  size_t size() const noexcept { return entries_.size(); }

 private:
  std::map<uint64_t, Entry> entries_;  // by the number of the registration
  uint64_t last_ = 0;
  uint64_t changes_ = 0;
};

}  // namespace qrn
