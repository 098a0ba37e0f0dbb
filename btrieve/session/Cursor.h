// One open position block: where its user stands in the file, and the records it has locked.
#pragma once

#include <cstdint>
#include <map>
#include <memory>

#include "btrieve/files/DataFile.h"

namespace btrieve {

enum class LockKind : uint8_t { None, Single, Multiple };

struct Cursor {
  // Where reads by place and Update, Delete, Get Position work. Gone: behind a deleted record,
  // whose neighbours are still found from its position.
  enum class Place : uint8_t { BeforeFirst, On, Gone };
  // Where reads along a key go on. Broken: an Update named another key, so that the key to go on
  // along is not the one it was.
  enum class Along : uint8_t { None, On, Broken };

  ~Cursor() { walk.End(); }

  std::shared_ptr<DataFile> file;
  bool readOnly = false;
  bool exclusive = false;
  bool isLost = false;  // the server that held the file had gone: nothing of the cursor holds

  Place place = Place::BeforeFirst;
  bool writable = false;  // the record was read by what Update and Delete accept
  uint32_t position = 0;
  uint64_t version = 0;

  Along along = Along::None;
  uint8_t keyNumber = 0;
  bool wholeValue = false;  // it stands on all records of the value: Get Key
  Entry entry;              // the entry it stands on, or stood on before a Delete

  Walk walk;
  bool walkIsHere = false;  // the walk's last record is the one the cursor stands on

  LockKind lockKind = LockKind::None;
  std::map<uint32_t, bool> locks;  // position; whether the running transaction took it

  void StandOn(const Hit& hit, bool mayWrite) noexcept {
    place = Place::On;
    writable = mayWrite;
    position = hit.position;
    version = hit.version;
  }
  void StandAlong(uint8_t number, ByteView at, bool whole = false) noexcept {
    along = Along::On;
    keyNumber = number;
    wholeValue = whole;
    entry.Assign(at);
  }
  void LeaveKey() noexcept { along = Along::None; }
};

// The version no record has: Update and Delete find a conflict.
inline constexpr uint64_t kStaleVersion = UINT64_MAX;

// Cursors by what stands in callers' position blocks. A block holds no address: one that Open did
// not fill, or that has been closed, is found out.
class CursorTable {
 public:
  static constexpr size_t kBlockSize = BtrPositionBlockSize;
  static constexpr size_t kMostCursors = 8192;

  // Null for a block that is no open cursor's.
  Cursor* Find(const void* block) const noexcept;
  // Fills the block. False when there are too many.
  [[nodiscard]] bool Add(std::unique_ptr<Cursor> cursor, void* block);
  void Remove(void* block) noexcept;
  void Clear() noexcept;

  template <class Action>
  void ForEach(Action action) {
    for (Slot& slot : slots_) {
      if (slot.cursor) action(*slot.cursor);
    }
  }
  template <class Action>
  void ForEachOn(const DataFile& file, Action action) {
    ForEach([&](Cursor& cursor) {
      if (cursor.file.get() == &file) action(cursor);
    });
  }

 private:
  struct Slot {
    std::unique_ptr<Cursor> cursor;
    uint64_t generation = 0;
  };
  std::vector<Slot> slots_;
  uint64_t nextGeneration_ = 1;
};

}  // namespace btrieve
