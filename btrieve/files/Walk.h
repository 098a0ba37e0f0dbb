// A walk along a key or through the records by position, as the client sees the file: the committed
// state, with the client's own uncommitted changes in their places.
#pragma once

#include "btrieve/files/Overlay.h"
#include "btrieve/storage/BaseWalk.h"

namespace btrieve {

class DataFile;

class Walk {
 public:
  // Whether it can simply go on; otherwise it must be started anew from where its user stands.
  bool IsLive(int slot, bool forward) const noexcept { return base_.IsLive(slot, forward); }
  // Forward: entries at or above the bound. Backward: those below it, from the last one down.
  // In physical order bounds are made by PositionEntry.
  void Start(DataFile& file, int slot, bool forward, ByteView bound);
  // False at the end, and ever after.
  bool Step(Hit& hit);
  // The same for an extended read, which may never meet what it would reject (ForeignWalk).
  bool Search(Hit& hit, ScanDemand& demand);
  void End() noexcept { base_.End(); }

 private:
  // Kept: read before others were.
  enum class Ahead : uint8_t { Unknown, Read, Kept, None };

  bool StepMerged(Hit& hit, ScanDemand* demand);
  void AdvanceBase(ScanDemand* demand);
  bool FindOverlaid(Hit& hit) const;
  bool FindOverlaidEntry(Hit& hit) const;
  bool FindOverlaidPosition(Hit& hit) const;
  bool BaseComesFirst(const Hit& overlaid) const noexcept;
  void PassOverlaid(const Hit& hit);

  BaseWalk base_;
  const Overlay* overlay_ = nullptr;
  int slot_ = 0;
  bool forward_ = true;
  Ahead ahead_ = Ahead::Unknown;
  Hit baseHit_;
  Entry place_;  // where the overlay is to be searched on
};

}  // namespace btrieve
