#include "btrieve/storage/EntryTree.h"

#include <array>
#include <bit>
#include <cstring>
#include <new>

#include "btrieve/storage/RowRules.h"
#include "btrieve/storage/Tree.h"

namespace btrieve {
namespace {

// SQLite's row of an entry: the size of the header, the columns' types, the bytes, the position.
class EntryRow {
 public:
  EntryRow(ByteView entry, uint32_t position) {
    const uint64_t type = 12 + 2 * uint64_t{entry.size()};
    const size_t width = WidthOf(position);
    size_ = 1;
    if (type > 0x7F) Put(static_cast<uint8_t>(0x80 | type >> 7));
    Put(type & 0x7F);
    Put(position == 1 ? kOne : static_cast<uint8_t>(width));
    bytes_[0] = static_cast<uint8_t>(size_);
    std::memcpy(&bytes_[size_], entry.data(), entry.size());
    size_ += entry.size();
    for (size_t byte = width; byte-- > 0;) Put(position >> 8 * byte);
  }

  ByteView View() const noexcept { return {bytes_.data(), size_}; }

 private:
  static constexpr uint8_t kOne = 9;        // the number 1 is all type
  static constexpr size_t kMostAround = 8;  // three or four bytes of header, up to four of position
  static constexpr size_t kLongestEntry = kMaxOrderedSize + kOrderNumberSize;
  static_assert(12 + 2 * kLongestEntry < (1 << 14), "its type is two bytes long at most");

  // Signed, so a first bit that is set takes one byte more. Five bytes are no width of SQLite's,
  // and no position needs them.
  static size_t WidthOf(uint32_t position) noexcept {
    return position == 1 ? 0 : static_cast<size_t>(std::bit_width(position)) / 8 + 1;
  }
  void Put(uint64_t byte) noexcept { bytes_[size_++] = static_cast<uint8_t>(byte); }

  std::array<uint8_t, kLongestEntry + kMostAround> bytes_;
  size_t size_ = 0;
};

}  // namespace

class EntryTree::Search {
 public:
  Search(sqlite_entries* entries, ByteView entry) noexcept
      : entries_(entries),
        result_(sqlite_entries_seek(entries, entry.data(), static_cast<int>(entry.size()), &before,
                                    &after)) {}
  ~Search() { sqlite_entries_end(entries_); }
  Search(const Search&) = delete;
  Search& operator=(const Search&) = delete;

  bool IsTaken() const {
    if (result_ != SQLITE_OK && result_ != SQLITE_CONSTRAINT) ThrowResult(result_);
    return result_ == SQLITE_CONSTRAINT;
  }
  void Insert(ByteView row) {
    if (const int result =
            sqlite_entries_insert(entries_, row.data(), static_cast<int>(row.size()))) {
      ThrowResult(result);
    }
  }

  sqlite_cell before{};
  sqlite_cell after{};

 private:
  sqlite_entries* entries_;
  int result_;
};

EntryTree::EntryTree(const Connection& connection, uint32_t root, size_t size, size_t valueSize)
    : entries_(sqlite_entries_make(connection.Get(), root)), size_(size), valueSize_(valueSize) {
  if (!entries_) throw std::bad_alloc();
}

bool EntryTree::HasValue(const sqlite_cell& cell, ByteView value) const {
  if (!cell.page) return false;
  const ByteView entry = RowReader(TreeCursor::EntryIn(cell.page, cell.cell)).TakeBytes();
  CheckEntry(entry, size_);
  return BytesEqual(entry.first(valueSize_), value);
}

EntryTree::Added EntryTree::Add(ByteView entry, uint32_t position) {
  Search search(entries_.get(), entry);
  if (search.IsTaken()) return Added::Taken;
  const ByteView value = entry.first(valueSize_);
  const bool repeated = HasValue(search.before, value) || HasValue(search.after, value);
  search.Insert(EntryRow(entry, position).View());
  return repeated ? Added::Repeated : Added::NewValue;
}

}  // namespace btrieve
