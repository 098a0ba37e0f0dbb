#include "btrieve/locks/WaitCycle.h"

#include <cstring>
#include <utility>

namespace btrieve {
namespace {

bool WaitsFor(const WaitNotes& notes, size_t waiter, size_t holder) noexcept {
  const uint64_t number = notes[waiter].number;
  return number != 0 && waiter != holder && notes[holder].number != 0 &&
         notes[holder].keepsWaiting[waiter] == number;
}

bool BeganBefore(const WaitNotes& notes, size_t one, size_t other) noexcept {
  return std::pair(notes[one].since, one) < std::pair(notes[other].since, other);
}

// Seats in the order in which a search reaches them, each with the one it was reached from.
class Reached {
 public:
  explicit Reached(size_t first) noexcept { Add(first, first); }

  bool Next(size_t& seat) noexcept {
    if (next_ == count_) return false;
    seat = order_[next_++];
    return true;
  }
  void Add(size_t seat, size_t from) noexcept {
    if (known_[seat]) return;
    known_[seat] = true;
    from_[seat] = from;
    order_[count_++] = seat;
  }
  size_t From(size_t seat) const noexcept { return from_[seat]; }

 private:
  std::array<size_t, kWaitSeats> order_;
  std::array<size_t, kWaitSeats> from_;
  std::array<bool, kWaitSeats> known_{};
  size_t count_ = 0;
  size_t next_ = 0;
};

}  // namespace

uint64_t SumOf(const WaitNote& note) noexcept {
  std::array<uint64_t, sizeof(WaitNote) / sizeof(uint64_t)> words;
  std::memcpy(words.data(), &note, sizeof note);
  uint64_t sum = 0x9E3779B97F4A7C15;
  for (size_t i = 1; i < words.size(); ++i) {
    sum = (sum ^ words[i]) * 0x100000001B3;
    sum ^= sum >> 32;
  }
  return sum;
}

bool FindCycle(const WaitNotes& notes, size_t self, WaitCycle& cycle) noexcept {
  cycle.fill(0);
  Reached reached(self);
  for (size_t waiter; reached.Next(waiter);) {
    for (size_t holder = 0; holder < kWaitSeats; ++holder) {
      if (!WaitsFor(notes, waiter, holder)) continue;
      if (BeganBefore(notes, holder, self)) reached.Add(holder, waiter);
      if (holder != self) continue;
      for (; waiter != self; waiter = reached.From(waiter)) cycle[waiter] = notes[waiter].number;
      cycle[self] = notes[self].number;
      return true;
    }
  }
  return false;
}

}  // namespace btrieve
