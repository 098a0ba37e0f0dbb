// Goes through the committed entries of a key, or the records by position, as BaseWalk does, but
// page by page and several times as fast. For the length of one call: the pages are held, so
// nothing may be written and no newer state be read meanwhile.
#pragma once

#include "btrieve/Storage.h"
#include "btrieve/Tree.h"

namespace btrieve {

class PageScan {
 public:
  // Forward: entries at or above the bound. Backward: those below it, from the last one down.
  // In physical order bounds are made by PositionEntry. Throws Failure, as Step does.
  void Start(Storage& storage, int slot, bool forward, ByteView bound);
  // False at the end, and ever after.
  bool Step(Hit& hit);

 private:
  enum class Ahead : uint8_t { None, First, Further };

  bool Move();
  void ReadRecord(Hit& hit);

  TreeCursor records_;
  TreeCursor entries_;
  bool along_ = false;
  bool forward_ = true;
  Ahead ahead_ = Ahead::None;
};

}  // namespace btrieve
