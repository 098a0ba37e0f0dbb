// SQLite's trees read page by page, without a statement: for scans, which look at many rows and
// want little of each. The format is the published one of its files: a tree of rows, ordered by row
// number, or of entries, ordered by their first column's bytes.
//
// Everything here throws Failure: 2 for pages that are no such tree, and what reading them gives.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "btrieve/pages/PagePool.h"
#include "btrieve/storage/LeafMemo.h"
#include "btrieve/storage/RowReader.h"

namespace btrieve {

// A place in a tree. It holds the pages on the way there, so it must be gone, or closed, before the
// transaction it reads in ends and before anything is written.
class TreeCursor {
 public:
  enum class Kind : uint8_t { Rows, Entries };

  // `pool` may be null; it must then be cleared when the cursor must be closed.
  void Open(sqlite3* connection, Kind kind, uint32_t root, PagePool* pool = nullptr);
  void Close() noexcept;
  bool IsOpen() const noexcept { return depth_ != 0; }

  // To the first row or entry at or above the bound; false, standing behind the last one, without
  // any. From either place Previous leads to the one before.
  bool SeekRow(int64_t row);
  bool SeekEntry(ByteView bound);
  bool Next();
  bool Previous();
  // Whether Next or Previous stays in the page.
  bool StaysInPage(bool forward) const noexcept;

  // Where a row is likely to stand, for looking at several rows at a time: the page is in the pool,
  // the cell on its way into the processor's cache after Prefetch. Rows are read by TakeSpot, false
  // where the row is not there and has to be sought.
  struct Spot {
    const uint8_t* leaf = nullptr;
    uint32_t cell = 0;
  };
  Spot Guess(int64_t row);
  void Prefetch(const Spot& spot) const;
  bool TakeSpot(const Spot& spot, int64_t row, ByteView& payload);

  // The row of an entry, of a page that somebody else holds.
  static ByteView EntryIn(const uint8_t* page, uint32_t cell) {
    return TakeCell(Kind::Entries, PageOf(Kind::Entries, page), cell).local;
  }

  int64_t Row() const;
  // The stored row: columns for RowReader. Valid until the cursor moves. `row` may be null.
  ByteView Payload(int64_t* row = nullptr);

 private:
  static constexpr size_t kDeepest = 20;

  struct Page {
    const uint8_t* bytes = nullptr;
    uint32_t cells = 0;
    bool leaf = false;
  };
  struct Cell {
    uint64_t size;   // of the whole row
    int64_t row;     // 0 of an entry
    ByteView local;  // what of the row stands in the page
  };
  struct Level : Page {
    PageRef held;  // unless it is in the pool
    uint32_t number = 0;
    uint32_t at = 0;  // the cell stood on; in an inner page also the child gone down to
  };

  static Page PageOf(Kind kind, const uint8_t* bytes);
  Page PageOf(const uint8_t* bytes) const { return PageOf(kind_, bytes); }
  const uint8_t* Fetch(uint32_t number, PageRef& held) const;

  Level& Top() noexcept { return levels_[depth_ - 1]; }
  const Level& Top() const noexcept { return levels_[depth_ - 1]; }
  void Push(uint32_t number);
  Spot GuessedSpot(int64_t row) const noexcept;
  bool SeekLeaf(int64_t row);
  // The page below the top's current cell becomes the top; kept if it is the one held already.
  void Descend(size_t heldDepth);
  void DescendToFirst();
  void DescendToLast();
  bool ClimbForward();
  static const uint8_t* CellAt(const Page& page, uint32_t index);
  static Cell TakeCell(Kind kind, const Page& page, uint32_t index);
  uint32_t ChildAt(const Page& page, uint32_t index) const;
  int64_t RowAt(const Page& page, uint32_t index) const;
  ByteView PayloadAt(const Page& page, uint32_t index, int64_t* row = nullptr);
  ByteView Gather(const uint8_t* local, size_t localSize, size_t size);
  uint32_t FirstRowNotBelow(const Page& page, int64_t row) const;
  uint32_t FirstEntryNotBelow(const Page& page, ByteView bound);

  sqlite3* connection_ = nullptr;
  PagePool* pool_ = nullptr;
  Kind kind_ = Kind::Rows;
  size_t depth_ = 0;
  std::array<Level, kDeepest> levels_;
  std::vector<uint8_t> gathered_;  // a row that goes on in further pages
  Leaf guessed_;                   // at last
  LeafMemo leaves_;
};

}  // namespace btrieve
