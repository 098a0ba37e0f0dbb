#include "btrieve/Tree.h"

#include "btrieve/CheckedVfs.h"
#include "btrieve/sqlite/SqlitePages.h"

namespace btrieve {
namespace {

constexpr size_t kUsable = kStoragePageSize - kPageSumSize;
constexpr size_t kLeafHeader = 8;
constexpr size_t kInnerHeader = 12;
constexpr size_t kChildSize = 4;
constexpr size_t kLongestRow = 1 << 17;  // well above a record and its numbers

enum PageType : uint8_t {
  kInnerEntries = 2,
  kInnerRows = 5,
  kLeafEntries = 10,
  kLeafRows = 13,
};

uint32_t Big16(const uint8_t* at) noexcept { return static_cast<uint32_t>(at[0] << 8 | at[1]); }
uint32_t Big32(const uint8_t* at) noexcept { return Big16(at) << 16 | Big16(at + 2); }

// How much of a row of `size` bytes stands in the tree's own page.
size_t LocalSize(size_t size, bool rows) noexcept {
  constexpr size_t kLeast = (kUsable - 12) * 32 / 255 - 23;
  const size_t most = rows ? kUsable - 35 : (kUsable - 12) * 64 / 255 - 23;
  if (size <= most) return size;
  const size_t local = kLeast + (size - kLeast) % (kUsable - 4);
  return local <= most ? local : kLeast;
}

}  // namespace

PageRef::PageRef(sqlite3* connection, uint32_t number) {
  const int result = sqlite_page_get(connection, number, &page_, &bytes_);
  if (result != SQLITE_OK) ThrowResult(result);
}

PageRef::~PageRef() {
  if (page_) sqlite_page_release(page_);
}

void TreeCursor::Open(sqlite3* connection, Kind kind, uint32_t root) {
  Close();
  connection_ = connection;
  kind_ = kind;
  Push(root);
}

void TreeCursor::Close() noexcept {
  for (Level& level : levels_) level = Level();
  depth_ = 0;
}

void TreeCursor::Push(uint32_t number) {
  if (depth_ == kDeepest) ThrowDamaged();
  Level& level = levels_[depth_];
  level.page = PageRef(connection_, number);
  level.bytes = level.page.Bytes();
  level.number = number;
  level.at = 0;
  const bool rows = kind_ == Kind::Rows;
  const uint8_t type = level.bytes[0];
  level.leaf = type == (rows ? kLeafRows : kLeafEntries);
  if (!level.leaf && type != (rows ? kInnerRows : kInnerEntries)) ThrowDamaged();
  level.cells = Big16(level.bytes + 3);
  const size_t header = level.leaf ? kLeafHeader : kInnerHeader;
  if (header + 2 * level.cells > kUsable) ThrowDamaged();
  ++depth_;
}

const uint8_t* TreeCursor::CellAt(const Level& level, uint32_t index) const {
  const size_t header = level.leaf ? kLeafHeader : kInnerHeader;
  const uint32_t offset = Big16(level.bytes + header + 2 * index);
  if (offset > kUsable - kChildSize) ThrowDamaged();
  return level.bytes + offset;
}

uint32_t TreeCursor::ChildAt(const Level& level, uint32_t index) const {
  return Big32(index == level.cells ? level.bytes + kLeafHeader : CellAt(level, index));
}

int64_t TreeCursor::RowAt(const Level& level, uint32_t index) const {
  const uint8_t* at = CellAt(level, index);
  const uint8_t* end = level.bytes + kUsable;
  if (level.leaf) {
    (void)TakeVarint(at, end);
  } else {
    at += kChildSize;
  }
  return static_cast<int64_t>(TakeVarint(at, end));
}

ByteView TreeCursor::PayloadAt(const Level& level, uint32_t index) {
  const uint8_t* at = CellAt(level, index);
  const uint8_t* end = level.bytes + kUsable;
  if (!level.leaf) at += kChildSize;
  const uint64_t size = TakeVarint(at, end);
  const bool rows = kind_ == Kind::Rows;
  if (rows) (void)TakeVarint(at, end);
  if (size > kLongestRow) ThrowDamaged();
  const size_t local = LocalSize(static_cast<size_t>(size), rows);
  const size_t needed = local == size ? local : local + kChildSize;
  if (at > end || needed > static_cast<size_t>(end - at)) ThrowDamaged();
  return local == size ? ByteView(at, local) : Gather(at, local, static_cast<size_t>(size));
}

// The rest stands in a chain of pages, each beginning with the number of the next.
ByteView TreeCursor::Gather(const uint8_t* local, size_t localSize, size_t size) {
  gathered_.assign(local, local + localSize);
  uint32_t next = Big32(local + localSize);
  while (gathered_.size() < size) {
    const PageRef page(connection_, next);
    const size_t part = std::min(size - gathered_.size(), kUsable - kChildSize);
    const uint8_t* bytes = page.Bytes() + kChildSize;
    gathered_.insert(gathered_.end(), bytes, bytes + part);
    next = Big32(page.Bytes());
  }
  return gathered_;
}

// Positions are mostly given without gaps, so a row is where it would then be, counted from the
// last row of the leaf before, which the page above tells.
uint32_t TreeCursor::FirstRowNotBelow(const Level& level, int64_t row) const {
  uint32_t low = 0;
  uint32_t high = level.cells;
  if (level.leaf && depth_ > 1) {
    const Level& above = levels_[depth_ - 2];
    const int64_t ahead = above.at == 0 ? row : row - RowAt(above, above.at - 1);
    const bool within = ahead > 0 && ahead <= level.cells;
    if (within && RowAt(level, static_cast<uint32_t>(ahead - 1)) == row) {
      return static_cast<uint32_t>(ahead - 1);
    }
  }
  while (low < high) {
    const uint32_t middle = (low + high) / 2;
    if (RowAt(level, middle) < row) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low;
}

uint32_t TreeCursor::FirstEntryNotBelow(const Level& level, ByteView bound) {
  uint32_t low = 0;
  uint32_t high = level.cells;
  while (low < high) {
    const uint32_t middle = (low + high) / 2;
    RowReader row(PayloadAt(level, middle));
    if (BytesLess(row.TakeBytes(), bound)) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low;
}

void TreeCursor::Descend(size_t heldDepth) {
  const uint32_t child = ChildAt(Top(), Top().at);
  if (depth_ < heldDepth && levels_[depth_].number == child) {
    ++depth_;
  } else {
    Push(child);
  }
}

// Of the pages held, those that lead to the row are not fetched again.
bool TreeCursor::SeekRow(int64_t row) {
  size_t held = depth_;
  depth_ = 1;
  while (true) {
    Top().at = FirstRowNotBelow(Top(), row);
    if (Top().leaf) break;
    const uint32_t child = ChildAt(Top(), Top().at);
    if (depth_ < held && levels_[depth_].number != child) held = depth_;
    Descend(held);
  }
  return Top().at < Top().cells || ClimbForward();
}

bool TreeCursor::SeekEntry(ByteView bound) {
  depth_ = 1;
  while (true) {
    Top().at = FirstEntryNotBelow(Top(), bound);
    if (Top().leaf) break;
    Push(ChildAt(Top(), Top().at));
  }
  return Top().at < Top().cells || ClimbForward();
}

void TreeCursor::DescendToFirst() {
  while (!Top().leaf) Push(ChildAt(Top(), Top().at));
}

void TreeCursor::DescendToLast() {
  while (!Top().leaf) {
    Push(ChildAt(Top(), Top().at));
    Top().at = Top().cells;
  }
}

// From behind the last cell of a leaf. An inner page of entries has entries of its own between its
// children. At the end of the tree the place stays behind its last leaf.
bool TreeCursor::ClimbForward() {
  size_t above = depth_ - 1;
  while (above > 0 && levels_[above - 1].at == levels_[above - 1].cells) --above;
  if (above == 0) return false;
  depth_ = above;
  if (kind_ == Kind::Entries) return true;
  ++Top().at;
  DescendToFirst();
  return Top().cells != 0 || ClimbForward();
}

bool TreeCursor::Next() {
  if (Top().leaf) {
    if (Top().at < Top().cells) ++Top().at;
    return Top().at < Top().cells || ClimbForward();
  }
  ++Top().at;
  DescendToFirst();
  return Top().at < Top().cells || ClimbForward();
}

bool TreeCursor::Previous() {
  if (!Top().leaf) DescendToLast();
  while (Top().at == 0) {
    if (depth_ == 1) return false;
    --depth_;
    if (Top().at == 0) continue;
    --Top().at;
    if (kind_ == Kind::Entries) return true;
    DescendToLast();
  }
  --Top().at;
  return true;
}

int64_t TreeCursor::Row() const { return RowAt(Top(), Top().at); }

ByteView TreeCursor::Payload() { return PayloadAt(Top(), Top().at); }

}  // namespace btrieve
