// What changes a file's keys or its owner needs the file for this process alone.
#pragma once

#include "btrieve/session/Session.h"

namespace btrieve {

// Keeps other processes from opening the file until the end of the scope.
class SoleUse {
 public:
  explicit SoleUse(DataFile& file);
  ~SoleUse();
  SoleUse(const SoleUse&) = delete;
  SoleUse& operator=(const SoleUse&) = delete;

  // False while another process has the file open.
  explicit operator bool() const noexcept { return granted_; }

 private:
  LockBytes& space_;
  HeldByte gate_;
  bool lifted_ = false;
  bool granted_ = false;
};

}  // namespace btrieve
