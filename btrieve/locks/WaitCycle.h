// Who waits for whom among processes, and whether a wait can never end.
//
// Each process that waits for another's lock has a note which it alone writes: what it waits for,
// and which of the others wait for something that it holds itself. From all notes together anybody
// reads the cycles. Holding only grows while a process waits, and a wait has ended in its note
// before the locks that it may have got or given up tell: so a cycle whose notes are the same at
// two looks was there between them, and goes only if one of its members gives way.
#pragma once

#include <array>
#include <cstdint>

#include "btrieve/system/HostFile.h"

namespace btrieve {

inline constexpr size_t kWaitSeats = 64;  // processes that wait at the same time

// One byte of a file's locks.
struct Obstacle {
  FileIdentity file;
  uint64_t byte = 0;  // 0: nothing that anybody holds for long
  bool operator==(const Obstacle&) const = default;
};

// As it stands in memory that processes share. `number` names the wait and what it is for at the
// time; none is used twice. 0: there is no wait.
struct WaitNote {
  uint64_t sum = 0;    // of all that follows
  uint64_t since = 0;  // nanoseconds of a clock that all processes share
  uint64_t number = 0;
  Obstacle wanted;
  // By seat: the number of the note there whose wanted byte this process holds.
  std::array<uint64_t, kWaitSeats> keepsWaiting{};

  bool operator==(const WaitNote&) const = default;
};
using WaitNotes = std::array<WaitNote, kWaitSeats>;
static_assert(sizeof(WaitNote) == 8 * (6 + kWaitSeats), "no padding: notes are summed as words");

uint64_t SumOf(const WaitNote& note) noexcept;

// The numbers of a cycle's notes by seat, 0 for those outside it.
using WaitCycle = std::array<uint64_t, kWaitSeats>;

// A cycle through `self` in which `self` began to wait last: every cycle has exactly one such
// member, which is to give way. False without one.
[[nodiscard]] bool FindCycle(const WaitNotes& notes, size_t self, WaitCycle& cycle) noexcept;

}  // namespace btrieve
