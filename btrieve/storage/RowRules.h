// What rows of a data file must be like, asked once where they are read, so that what lies behind
// may rely on it. Checksums find what happens to a page; this finds pages that were written wrong.
//
// Everything here throws Failure (2) for rows that nobody could have written.
#pragma once

#include "btrieve/keys/Entry.h"
#include "btrieve/keys/KeySpec.h"
#include "btrieve/pages/Sqlite.h"
#include "btrieve/storage/Head.h"
#include "btrieve/storage/OrderNumbers.h"

namespace btrieve {

inline constexpr size_t kLongestRecord = 65535;

inline uint32_t CheckedPosition(int64_t stored) {
  if (stored < 1 || stored > kHighestPosition) ThrowDamaged();
  return static_cast<uint32_t>(stored);
}

inline void CheckEntry(ByteView entry, size_t size) {
  if (entry.size() != size) ThrowDamaged();
}

// A record as it stands in a file, and the numbers stored with it.
inline void CheckRecord(const FileSpec& spec, ByteView data, ByteView numbers) {
  const size_t most = spec.IsVariable() ? kLongestRecord : spec.recordLength;
  if (data.size() < spec.recordLength || data.size() > most) ThrowDamaged();
  if (numbers.size() % kOrderNumberRow != 0) ThrowDamaged();
}

// Holds a walk to its direction: what it meets lies on its side of the bound, and each entry or
// position beyond the one before. So pages that lead in a circle, or twice to the same rows, end
// a walk at the first row that comes again.
class Onward {
 public:
  // Forward: at or above the bound. Backward: below it.
  void Begin(bool forward, ByteView bound) noexcept {
    Start(forward);
    lastEntry_.Assign(bound);
  }
  void Begin(bool forward, int64_t bound) noexcept {
    Start(forward);
    lastPosition_ = bound;
  }

  void Meet(ByteView entry) {
    const bool beyond = !forward_ ? BytesLess(entry, lastEntry_.View())
                        : any_    ? BytesLess(lastEntry_.View(), entry)
                                  : !BytesLess(entry, lastEntry_.View());
    if (!beyond) ThrowDamaged();
    lastEntry_.Assign(entry);
    any_ = true;
  }
  void Meet(uint32_t position) {
    const bool beyond = !forward_ ? position < lastPosition_
                        : any_    ? position > lastPosition_
                                  : position >= lastPosition_;
    if (!beyond) ThrowDamaged();
    lastPosition_ = position;
    any_ = true;
  }

 private:
  void Start(bool forward) noexcept {
    forward_ = forward;
    any_ = false;
  }

  bool forward_ = true;
  bool any_ = false;
  int64_t lastPosition_ = 0;
  Entry lastEntry_;
};

}  // namespace btrieve
