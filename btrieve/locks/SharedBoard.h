// Memory that the processes of this machine share: a row of seats of one size. A seat belongs to
// one process at a time, which alone writes there; when it dies the system takes the seat back, and
// what stands there stays until the next owner writes. Any user may take part. Who reads while an
// owner writes may get a mixture, so what is written must tell whether it is whole.
//
// Everything may fail: then this process does without.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace btrieve {

struct BoardShape {
  const char* name;  // up to 40 letters, digits and hyphens; others for another shape or content
  size_t seats;
  size_t seatSize;  // bytes
};

class SharedBoard {
 public:
  // A seat at the board, until the end of the object. Never waits.
  explicit SharedBoard(const BoardShape& shape) noexcept;
  ~SharedBoard();
  SharedBoard(const SharedBoard&) = delete;
  SharedBoard& operator=(const SharedBoard&) = delete;

  // False where the system gives no such memory or all seats are taken; then nothing else may be
  // called.
  explicit operator bool() const noexcept { return handle_ && seat_ < shape_.seats; }
  size_t Seat() const noexcept { return seat_; }
  // Somebody else, who lives, has the seat.
  bool IsTaken(size_t seat) const noexcept;

  // All seats, one behind the other; zeros where nobody has written yet.
  [[nodiscard]] bool Read(std::span<uint8_t> seats) const noexcept;
  // Into the own seat.
  [[nodiscard]] bool Write(std::span<const uint8_t> bytes) noexcept;

 private:
  struct Handle;

  [[nodiscard]] bool Open() noexcept;
  [[nodiscard]] bool Take(size_t seat) noexcept;

  BoardShape shape_;
  std::unique_ptr<Handle> handle_;
  size_t seat_ = 0;
};

}  // namespace btrieve
