// Whose turn it is to fill. What a handler of `Format` stores for its row goes to one place in the
// process, so one fill runs at a time, of lists and grids together; forms share one thread. A fill
// that a handler of another one asks for is left out.
#pragma once

namespace qrn {

class FillTurn {
 public:
  FillTurn() noexcept { taken_ = true; }
  ~FillTurn() { taken_ = false; }
  FillTurn(const FillTurn&) = delete;
  FillTurn& operator=(const FillTurn&) = delete;

  // Ask before taking one: turns do not nest.
  static bool IsTaken() noexcept { return taken_; }

 private:
  static inline bool taken_ = false;
};

}  // namespace qrn
