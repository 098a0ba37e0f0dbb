// Goes through one order of a foreign file.
#pragma once

#include "btrieve/storage/ForeignFile.h"

namespace btrieve {

class ForeignWalk {
 public:
  bool IsOpen() const noexcept { return file_ != nullptr; }
  // Forward: what stands at or above the bound. Backward: below it, from the last one down.
  void Start(ForeignFile& file, int slot, bool forward, ByteView bound) {
    next_ = file.RankOf(slot, bound);
    file_ = &file;
    slot_ = slot;
    forward_ = forward;
  }
  // False at the end, and ever after.
  bool Step(Hit& hit) {
    if (!file_ || (forward_ ? next_ == file_->Total(slot_) : next_ == 0)) return false;
    file_->Read(slot_, forward_ ? next_++ : --next_, hit);
    return true;
  }
  void End() noexcept { file_ = nullptr; }

 private:
  ForeignFile* file_ = nullptr;
  int slot_ = 0;
  bool forward_ = true;
  uint32_t next_ = 0;  // rank; backward of the one met last
};

}  // namespace btrieve
