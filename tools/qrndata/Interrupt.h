// Ctrl-C as a wish to stop at the next good moment.
#pragma once

namespace qrndata {

// While it lives the first Ctrl-C is only noted; a second one ends the program.
class InterruptWatch {
 public:
  InterruptWatch() noexcept;
  ~InterruptWatch();
  InterruptWatch(const InterruptWatch&) = delete;
  InterruptWatch& operator=(const InterruptWatch&) = delete;

  static bool WasInterrupted() noexcept;

 private:
  void (*before_)(int);
};

}  // namespace qrndata
