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

  // Along a key the records stand anywhere, and most of the time goes into waiting for memory: so
  // several entries of a page are looked at together, and their records fetched side by side.
  static constexpr size_t kTogether = 16;
  struct Coming {
    ByteView entry;
    uint32_t position = 0;
    TreeCursor::Spot spot;
  };

  bool Move();
  bool LookAhead();
  ByteView RecordOf(const Coming& coming);

  TreeCursor records_;
  TreeCursor entries_;
  const FileSpec* spec_ = nullptr;
  size_t entrySize_ = 0;
  Onward onward_;
  bool along_ = false;
  bool forward_ = true;
  Ahead ahead_ = Ahead::None;
  std::array<Coming, kTogether> coming_;
  size_t next_ = 0;
  size_t end_ = 0;
};

}  // namespace btrieve
