// SQLite's trees read page by page, without a statement: for scans, which look at many rows and
// want little of each. The format is the published one of its files: a tree of rows, ordered by row
// number, or of entries, ordered by their first column's bytes.
//
// Everything here throws Failure: 2 for pages that are no such tree, and what reading them gives.
#pragma once

#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include "btrieve/RowReader.h"
#include "btrieve/Sqlite.h"

namespace btrieve {

// A page of SQLite's cache, held there until the end of the scope.
class PageRef {
 public:
  PageRef() = default;
  PageRef(sqlite3* connection, uint32_t number);
  PageRef(PageRef&& other) noexcept
      : page_(std::exchange(other.page_, nullptr)), bytes_(other.bytes_) {}
  PageRef& operator=(PageRef&& other) noexcept {
    std::swap(page_, other.page_);
    std::swap(bytes_, other.bytes_);
    return *this;
  }
  ~PageRef();

  const uint8_t* Bytes() const noexcept { return bytes_; }

 private:
  void* page_ = nullptr;
  const uint8_t* bytes_ = nullptr;
};

// A place in a tree. It holds the pages on the way there, so it must be gone, or closed, before the
// transaction it reads in ends and before anything is written.
class TreeCursor {
 public:
  enum class Kind : uint8_t { Rows, Entries };

  void Open(sqlite3* connection, Kind kind, uint32_t root);
  void Close() noexcept;
  bool IsOpen() const noexcept { return depth_ != 0; }

  // To the first row or entry at or above the bound; false, standing behind the last one, without
  // any. From either place Previous leads to the one before.
  bool SeekRow(int64_t row);
  bool SeekEntry(ByteView bound);
  bool Next();
  bool Previous();

  int64_t Row() const;
  // The stored row: columns for RowReader. Valid until the cursor moves.
  ByteView Payload();

 private:
  static constexpr size_t kDeepest = 20;

  struct Level {
    PageRef page;
    const uint8_t* bytes = nullptr;
    uint32_t number = 0;
    uint32_t at = 0;  // the cell stood on; in an inner page also the child gone down to
    uint32_t cells = 0;
    bool leaf = false;
  };

  Level& Top() noexcept { return levels_[depth_ - 1]; }
  const Level& Top() const noexcept { return levels_[depth_ - 1]; }
  void Push(uint32_t number);
  // The page below the top's current cell becomes the top; kept if it is the one held already.
  void Descend(size_t heldDepth);
  void DescendToFirst();
  void DescendToLast();
  bool ClimbForward();
  const uint8_t* CellAt(const Level& level, uint32_t index) const;
  uint32_t ChildAt(const Level& level, uint32_t index) const;
  int64_t RowAt(const Level& level, uint32_t index) const;
  ByteView PayloadAt(const Level& level, uint32_t index);
  ByteView Gather(const uint8_t* local, size_t localSize, size_t size);
  uint32_t FirstRowNotBelow(const Level& level, int64_t row) const;
  uint32_t FirstEntryNotBelow(const Level& level, ByteView bound);

  sqlite3* connection_ = nullptr;
  Kind kind_ = Kind::Rows;
  size_t depth_ = 0;
  std::array<Level, kDeepest> levels_;
  std::vector<uint8_t> gathered_;  // a row that goes on in further pages
};

}  // namespace btrieve
