// The entries of one key, as they are put in: a single search finds whether the entry may go in,
// whether its value is there already, and where it goes.
#pragma once

#include <memory>

#include "btrieve/keys/Entry.h"
#include "btrieve/pages/Sqlite.h"
#include "btrieve/sqlite/SqliteEntries.h"

namespace btrieve {

class EntryTree {
 public:
  enum class Added : uint8_t {
    Taken,     // the entry is there already; nothing has changed
    NewValue,  // the first entry of its value
    Repeated,  // one of several
  };

  EntryTree() = default;
  // `root` is the first page of the key's table. Entries are `size` bytes, the first `valueSize` of
  // which are the value. Throws 100 without memory.
  EntryTree(const Connection& connection, uint32_t root, size_t size, size_t valueSize);

  // Within a write transaction, which a failure leaves fit for nothing but being undone.
  Added Add(ByteView entry, uint32_t position);

 private:
  class Search;
  struct Free {
    void operator()(sqlite_entries* entries) const noexcept { sqlite_entries_free(entries); }
  };
  bool HasValue(const sqlite_cell& cell, ByteView value) const;

  std::unique_ptr<sqlite_entries, Free> entries_;
  size_t size_ = 0;
  size_t valueSize_ = 0;
};

}  // namespace btrieve
