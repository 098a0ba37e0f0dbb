#include "btrieve/storage/Tree.h"

#include <algorithm>

#include "btrieve/pages/BigEndian.h"
#include "btrieve/pages/CheckedVfs.h"
#include "btrieve/sqlite/SqlitePages.h"
#include "btrieve/storage/Layout.h"

namespace btrieve {
namespace {

constexpr size_t kUsable = kStoragePageSize - kPageSumSize;
constexpr size_t kLeafHeader = 8;
constexpr size_t kInnerHeader = 12;
constexpr size_t kChildSize = 4;

enum PageType : uint8_t {
  kInnerEntries = 2,
  kInnerRows = 5,
  kLeafEntries = 10,
  kLeafRows = 13,
};

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

void TreeCursor::Open(sqlite3* connection, Kind kind, uint32_t root, PagePool* pool) {
  Close();
  connection_ = connection;
  pool_ = pool;
  kind_ = kind;
  Push(root);
}

void TreeCursor::Close() noexcept {
  for (Level& level : levels_) {
    if (level.number == 0) break;  // no deeper one was ever used
    level = Level();
  }
  depth_ = 0;
  guessed_ = {};
  leaves_.Forget();
}

TreeCursor::Page TreeCursor::PageOf(Kind kind, const uint8_t* bytes) {
  const bool rows = kind == Kind::Rows;
  Page page{bytes, Big16(bytes + 3), bytes[0] == (rows ? kLeafRows : kLeafEntries)};
  if (!page.leaf && bytes[0] != (rows ? kInnerRows : kInnerEntries)) ThrowDamaged();
  const size_t header = page.leaf ? kLeafHeader : kInnerHeader;
  if (header + 2 * page.cells > kUsable) ThrowDamaged();
  return page;
}

// `held` stays empty for a page in the pool.
const uint8_t* TreeCursor::Fetch(uint32_t number, PageRef& held) const {
  held = PageRef();
  if (const uint8_t* bytes = pool_ ? pool_->Find(number) : nullptr) return bytes;
  held = PageRef(connection_, number);
  const uint8_t* bytes = held.Bytes();
  if (pool_) pool_->Offer(number, held);
  return bytes;
}

void TreeCursor::Push(uint32_t number) {
  if (depth_ == kDeepest) ThrowDamaged();
  Level& level = levels_[depth_];
  level.number = number;  // before anything throws: Close goes by it
  static_cast<Page&>(level) = PageOf(Fetch(number, level.held));
  if (depth_ > 0 && level.cells == 0) ThrowDamaged();  // only a root may be empty
  level.at = 0;
  ++depth_;
}

const uint8_t* TreeCursor::CellAt(const Page& page, uint32_t index) {
  const size_t header = page.leaf ? kLeafHeader : kInnerHeader;
  const uint32_t offset = Big16(page.bytes + header + 2 * index);
  if (offset > kUsable - kChildSize) ThrowDamaged();
  return page.bytes + offset;
}

uint32_t TreeCursor::ChildAt(const Page& page, uint32_t index) const {
  return Big32(index == page.cells ? page.bytes + kLeafHeader : CellAt(page, index));
}

int64_t TreeCursor::RowAt(const Page& page, uint32_t index) const {
  const uint8_t* at = CellAt(page, index);
  const uint8_t* end = page.bytes + kUsable;
  if (page.leaf) {
    (void)TakeVarint(at, end);
  } else {
    at += kChildSize;
  }
  return static_cast<int64_t>(TakeVarint(at, end));
}

TreeCursor::Cell TreeCursor::TakeCell(Kind kind, const Page& page, uint32_t index) {
  if (index >= page.cells) ThrowDamaged();
  const uint8_t* at = CellAt(page, index);
  const uint8_t* end = page.bytes + kUsable;
  if (!page.leaf) at += kChildSize;
  const uint64_t size = TakeVarint(at, end);
  const bool rows = kind == Kind::Rows;
  const auto number = static_cast<int64_t>(rows ? TakeVarint(at, end) : 0);
  if (size > kLongestRow) ThrowDamaged();
  const size_t local = LocalSize(static_cast<size_t>(size), rows);
  if (!rows && local != size) ThrowDamaged();  // no entry is that long
  const size_t needed = local == size ? local : local + kChildSize;
  if (at > end || needed > static_cast<size_t>(end - at)) ThrowDamaged();
  return {size, number, ByteView(at, local)};
}

ByteView TreeCursor::PayloadAt(const Page& page, uint32_t index, int64_t* row) {
  const Cell cell = TakeCell(kind_, page, index);
  if (row) *row = cell.row;
  return cell.local.size() == cell.size
             ? cell.local
             : Gather(cell.local.data(), cell.local.size(), static_cast<size_t>(cell.size));
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

// Rows are mostly spread evenly, so the search begins where the row would then be, and mostly ends
// there too.
uint32_t TreeCursor::FirstRowNotBelow(const Page& page, int64_t row) const {
  if (page.cells == 0) return 0;
  const int64_t first = RowAt(page, 0);
  const int64_t last = RowAt(page, page.cells - 1);
  if (row <= first) return 0;
  if (row > last) return page.cells;
  const auto begin = static_cast<double>(first);  // rows of a damaged page may be any numbers
  const double range = static_cast<double>(last) - begin;
  const double ahead = range > 0 ? (static_cast<double>(row) - begin) / range : 0;
  uint32_t low = 1;
  uint32_t high = page.cells - 1;
  const auto guess = std::min(static_cast<uint32_t>(ahead * high), high);
  if (RowAt(page, guess) < row) {
    low = guess + 1;
    if (low >= high || RowAt(page, low) >= row) return low;
  } else {
    high = std::max(guess, low);
    if (high == low || RowAt(page, high - 1) < row) return high;
  }
  while (low < high) {
    const uint32_t middle = (low + high) / 2;
    if (RowAt(page, middle) < row) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low;
}

// Positions are mostly given without gaps, so a row is where it would then be, counted from the
// last row of the page before, which the page above tells.
TreeCursor::Spot TreeCursor::GuessedSpot(int64_t row) const noexcept {
  return {guessed_.page, static_cast<uint32_t>(row) - guessed_.above - 1};
}

TreeCursor::Spot TreeCursor::Guess(int64_t row) {
  if (!pool_) return {};
  if (guessed_.MayHold(row)) return GuessedSpot(row);
  if (const Leaf* leaf = leaves_.Find(row)) {
    guessed_ = *leaf;
    __builtin_prefetch(guessed_.page);
    return GuessedSpot(row);
  }
  return SeekLeaf(row) ? GuessedSpot(row) : Spot();
}

// False where it is in none, or not in a page of the pool.
bool TreeCursor::SeekLeaf(int64_t row) {
  Page page = levels_[0];
  int64_t before = 0;
  int64_t last = INT64_MAX;
  for (size_t depth = 1; !page.leaf; ++depth) {
    const uint32_t at = FirstRowNotBelow(page, row);
    if (at != 0) before = RowAt(page, at - 1);
    if (at != page.cells) last = RowAt(page, at);
    PageRef held;
    const uint8_t* bytes = Fetch(ChildAt(page, at), held);
    if (held.Bytes() || depth == kDeepest) return false;
    __builtin_prefetch(bytes);
    __builtin_prefetch(bytes + 64);
    if (depth + 1 == depth_) {  // a leaf, which is not looked at before it has arrived
      guessed_ = leaves_.Note(row, bytes, before, last);
      return guessed_.MayHold(row);
    }
    page = PageOf(bytes);
  }
  return false;
}

void TreeCursor::Prefetch(const Spot& spot) const {
  if (!spot.leaf) return;
  const Page page = PageOf(spot.leaf);
  if (!page.leaf || spot.cell >= page.cells) return;
  const uint8_t* cell = CellAt(page, spot.cell);
  __builtin_prefetch(cell);
  __builtin_prefetch(cell + 64);
}

bool TreeCursor::TakeSpot(const Spot& spot, int64_t row, ByteView& payload) {
  if (!spot.leaf) return false;
  const Page page = PageOf(spot.leaf);
  if (!page.leaf || spot.cell >= page.cells) return false;
  int64_t found = 0;
  payload = PayloadAt(page, spot.cell, &found);
  return found == row;
}

uint32_t TreeCursor::FirstEntryNotBelow(const Page& page, ByteView bound) {
  uint32_t low = 0;
  uint32_t high = page.cells;
  while (low < high) {
    const uint32_t middle = (low + high) / 2;
    RowReader row(PayloadAt(page, middle));
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
  return true;
}

bool TreeCursor::Next() {
  if (Top().leaf) {
    if (Top().at < Top().cells) ++Top().at;
    return Top().at < Top().cells || ClimbForward();
  }
  ++Top().at;
  DescendToFirst();
  return true;
}

bool TreeCursor::StaysInPage(bool forward) const noexcept {
  return Top().leaf && (forward ? Top().at + 1 < Top().cells : Top().at > 0);
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

ByteView TreeCursor::Payload(int64_t* row) { return PayloadAt(Top(), Top().at, row); }

}  // namespace btrieve
