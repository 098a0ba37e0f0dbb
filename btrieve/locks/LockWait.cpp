#include "btrieve/locks/LockWait.h"

#include <algorithm>
#include <chrono>

namespace btrieve {
namespace {

uint64_t Now() noexcept {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<uint64_t>(std::chrono::nanoseconds(now).count());
}

std::span<const uint8_t> BytesOf(const WaitNote& note) noexcept {
  return {reinterpret_cast<const uint8_t*>(&note), sizeof note};
}

}  // namespace

LockWait::LockWait() noexcept : board_(kWaitBoard) { own_.since = Now(); }

LockWait::~LockWait() {
  if (board_) (void)board_.Write(BytesOf(WaitNote()));
}

// What is half written is no note; the next look finds it whole.
bool LockWait::ReadNotes() noexcept {
  if (!board_.Read({reinterpret_cast<uint8_t*>(notes_.data()), sizeof notes_})) return false;
  for (WaitNote& note : notes_) {
    if (note.sum != SumOf(note)) note.number = 0;
  }
  return true;
}

void LockWait::Want(const Obstacle& obstacle) noexcept {
  if (own_.number != 0 && own_.wanted == obstacle) return;
  own_.wanted = obstacle;
  own_.number = std::max(own_.number + 1, Now());
}

bool LockWait::Publish() noexcept {
  own_.sum = SumOf(own_);
  WaitNote& published = notes_[board_.Seat()];
  if (published == own_) return true;
  published = own_;
  return board_.Write(BytesOf(own_));
}

// A cycle counts when it is seen at two looks running, and if its members live: the notes of the
// dead stay, but what they held is free.
bool LockWait::ClosesCycle() noexcept {
  WaitCycle cycle;
  const bool found = FindCycle(notes_, board_.Seat(), cycle);
  const bool again = found && cycle == suspected_;
  suspected_ = cycle;
  if (!again) return false;
  for (size_t seat = 0; seat < kWaitSeats; ++seat) {
    if (cycle[seat] != 0 && seat != board_.Seat() && !board_.IsTaken(seat)) return false;
  }
  return true;
}

}  // namespace btrieve
