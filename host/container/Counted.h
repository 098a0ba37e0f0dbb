// Counts something up as long as it lives.
#pragma once

#include <atomic>

namespace qrn::host {

class Counted {
 public:
  explicit Counted(std::atomic<int>& count) noexcept : count_(count) { ++count_; }
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;
  ~Counted() { --count_; }

 private:
  std::atomic<int>& count_;
};

}  // namespace qrn::host
