// Registered controls in the order of their registration.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace qrn {

// `Entry` has a pointer `Control`, which tells entries apart, and a `Tag()`: entries that a walk
// looks for have equal ones, most others have not. The controls are not owned.
template <class Entry>
class EntryList {
 public:
  void Append(Entry entry) {
    tags_.push_back(entry.Tag());
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

  // Puts another entry of the same control in its entry's place. False when there is none.
  bool Replace(Entry entry) {
    const size_t at = PlaceOf(entry.Control);
    if (at == entries_.size()) return false;
    tags_[at] = entry.Tag();
    entries_[at].second = std::move(entry);
    return true;
  }

  // False when there is none.
  template <class Control>
  bool Remove(const Control* control) {
    ++changes_;
    const size_t at = PlaceOf(control);
    if (at == entries_.size()) return false;
    entries_.erase(entries_.begin() + static_cast<ptrdiff_t>(at));
    tags_.erase(tags_.begin() + static_cast<ptrdiff_t>(at));
    return true;
  }

  // Visits what is in the list now. A visit may run handlers that change the list: who has left
  // when its turn comes is passed over, who joins waits for the next walk. The entry given is good
  // until a handler runs.
  template <class Visit>
  void Walk(Visit visit) {
    WalkFrom([](size_t at) { return at; }, visit);
  }
  // The same, but for entries of another tag.
  template <class Visit>
  void WalkTagged(uint32_t tag, Visit visit) {
    const auto next = [this, tag](size_t at) {
      const auto found = std::find(tags_.begin() + static_cast<ptrdiff_t>(at), tags_.end(), tag);
      return static_cast<size_t>(found - tags_.begin());
    };
    WalkFrom(next, visit);
  }

  size_t size() const noexcept { return entries_.size(); }

 private:
  template <class Next, class Visit>
  void WalkFrom(Next next, Visit visit) {
    const uint64_t end = last_;
    for (size_t at = next(0); at < entries_.size() && entries_[at].first <= end;) {
      const uint64_t number = entries_[at].first;
      const uint64_t changes = changes_;
      visit(entries_[at].second);
      at = next(changes == changes_ ? at + 1 : FirstBehind(number));
    }
  }

  template <class Control>
  size_t PlaceOf(const Control* control) const {
    const auto same = [control](const auto& each) { return each.second.Control == control; };
    return static_cast<size_t>(std::ranges::find_if(entries_, same) - entries_.begin());
  }

  size_t FirstBehind(uint64_t number) const {
    const auto behind = std::ranges::upper_bound(entries_, number, {}, &Numbered::first);
    return static_cast<size_t>(behind - entries_.begin());
  }

  using Numbered = std::pair<uint64_t, Entry>;  // the number of the registration
  std::vector<Numbered> entries_;               // by number
  std::vector<uint32_t> tags_;                  // of the same places
  uint64_t last_ = 0;
  uint64_t changes_ = 0;
};

}  // namespace qrn
