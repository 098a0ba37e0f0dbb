// Goes through the committed entries of a key, or through the records by position, one after the
// other, page by page in SQLite's cache. Kept from one call to the next it holds pages; so it stops
// by itself before the file is written to or read anew, and when too many others have begun since.
#pragma once

#include <optional>

#include "btrieve/storage/ForeignFile.h"
#include "btrieve/storage/Storage.h"

namespace btrieve {

class BaseWalk {
 public:
  BaseWalk() = default;
  ~BaseWalk() { End(); }
  BaseWalk(const BaseWalk&) = delete;
  BaseWalk& operator=(const BaseWalk&) = delete;

  bool IsLive(int slot, bool forward) const noexcept {
    return (storage_ || foreign_) && slot_ == slot && forward_ == forward;
  }
  // Forward: entries at or above the bound. Backward: those below it, from the last one down.
  // In physical order bounds are made by PositionEntry. Throws Failure, as Step does.
  void Start(Storage& storage, int slot, bool forward, ByteView bound);
  // False at the end, and ever after. What the hit views stays until the file's next read.
  bool Step(Hit& hit);
  // As ForeignWalk has it.
  bool Search(Hit& hit, ScanDemand& demand) {
    return foreign_ ? foreign_->Search(hit, demand) : Step(hit);
  }
  // The record stepped to last, once more: others may have been read meanwhile.
  void ReadAgain(Hit& hit);
  void End() noexcept;

 private:
  enum class Ahead : uint8_t { None, First, Further };

  // Along a key the records stand anywhere, and most of the time goes into waiting for memory: so a
  // walk that goes on looks at several entries of a page together, and their records are fetched
  // side by side.
  static constexpr size_t kTogether = 16;
  struct Coming {
    ByteView entry;
    uint32_t position = 0;
    TreeCursor::Spot spot;
  };

  void StartForeign(Storage& storage, int slot, bool forward, ByteView bound);
  void Enter(Storage& storage, int slot);
  bool Move();
  bool LookAhead();
  void TakeComing();
  ByteView RecordOf(const Coming& coming);
  bool StepAlong(Hit& hit);
  bool StepByPlace(Hit& hit);

  Storage* storage_ = nullptr;
  std::unique_ptr<ForeignWalk> foreign_;  // in place of everything below, in a foreign file
  Storage* home_ = nullptr;               // whose it is
  TreeCursor tree_;
  Onward onward_;
  RecordRows rows_;
  int slot_ = 0;
  bool forward_ = true;
  Ahead ahead_ = Ahead::None;
  std::array<Coming, kTogether> coming_;
  size_t next_ = 0;
  size_t end_ = 0;
  size_t together_ = 1;            // how many to look at next time
  std::optional<Failure> failed_;  // behind what has been looked at
};

}  // namespace btrieve
