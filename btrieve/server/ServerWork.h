// The one transaction of the server's that a connection may have open: of all files that are being
// written on it, which are committed together, when the last of them is, or not at all.
#pragma once

#include <cstdint>

namespace btrieve::server {

class ServerWork {
 public:
  bool IsOpen() const noexcept { return files_ > 0; }
  bool IsLast() const noexcept { return files_ == 1; }
  // Undone: no file of it can be committed any more.
  bool IsBroken() const noexcept { return broken_; }
  void Break() noexcept { broken_ = true; }
  // The server's number for it.
  int64_t Number() const noexcept { return number_; }

  void Join(int64_t number) noexcept {
    ++files_;
    number_ = number;
  }
  void Leave() noexcept {
    if (--files_ == 0) broken_ = false;
  }

 private:
  int files_ = 0;
  bool broken_ = false;
  int64_t number_ = 0;
};

}  // namespace btrieve::server
