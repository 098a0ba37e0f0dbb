// The record and the two stores that the record manager's benchmarks share: a Btrieve file reached
// through BTRCALL, and the same trees kept by hand on SQLite's C interface.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>

#include "HandStore.h"
#include "Ratios.h"
#include "btrieve.h"
#include "btrieve/system/Status.h"

namespace bench {

// 100 bytes: u32 id, i32 quantity, 20 bytes name, 4 bytes region, filler. Keys: id unique, name
// with duplicates, region with duplicates; all plain bytes big-endian, so that both stores order
// them without conversion.
inline constexpr uint32_t kRecordLength = 100;
using Record = std::array<uint8_t, kRecordLength>;

struct KeyPart {
  uint16_t offset, length;
  bool unique;
};
inline constexpr KeyPart kKeys[] = {{0, 4, true}, {8, 20, false}, {28, 4, false}};

inline uint32_t Scatter(uint32_t value) { return value * 2654435761u; }

inline Record MakeRecord(uint32_t number) {
  Record record{};
  const uint32_t id = Scatter(number);
  for (int byte = 0; byte < 4; ++byte) record[byte] = static_cast<uint8_t>(id >> (24 - 8 * byte));
  const int32_t quantity = static_cast<int32_t>(number % 100);
  std::memcpy(&record[4], &quantity, 4);
  std::snprintf(reinterpret_cast<char*>(&record[8]), 20, "name %012u", Scatter(number) % 50021);
  const uint32_t region = number % 97;
  record[31] = static_cast<uint8_t>(region);
  for (uint32_t place = 32; place < kRecordLength; ++place) {
    record[place] = static_cast<uint8_t>(number + place);
  }
  return record;
}

// One open Btrieve file.
class BtrieveFile {
 public:
  // A new one, with the first `count` records.
  BtrieveFile(std::string path, uint32_t count) : path_(std::move(path)) {
    Create();
    SetPath();
    Check(Call(0, nullptr, 0) == 0, "open failed");
    InsertAll(count);
  }

  int Call(uint16_t operation, void* data, uint32_t length, int8_t key = 0) {
    length_ = length;
    return BTRCALL(operation, block_, data, &length_, key_, sizeof key_, key);
  }
  uint32_t Length() const { return length_; }

  void Close() { Check(Call(1, nullptr, 0) == 0, "close failed"); }

 private:
  void Create() {
    std::vector<uint8_t> block(16 + 16 * std::size(kKeys));
    Put(&block[0], kRecordLength);
    Put(&block[2], 4096);
    block[4] = std::size(kKeys);
    for (size_t key = 0; key < std::size(kKeys); ++key) {
      uint8_t* spec = &block[16 + 16 * key];
      Put(spec, kKeys[key].offset + 1);
      Put(spec + 2, kKeys[key].length);
      Put(spec + 4, kKeys[key].unique ? 0x0102 : 0x0103);
    }
    SetPath();
    Check(Call(14, block.data(), static_cast<uint32_t>(block.size())) == 0, "create failed");
  }
  void InsertAll(uint32_t count) {
    Check(Call(19, nullptr, 0) == 0, "begin failed");
    for (uint32_t number = 0; number < count; ++number) {
      Record record = MakeRecord(number);
      Check(Call(2, record.data(), kRecordLength, -1) == 0, "insert failed");
    }
    Check(Call(20, nullptr, 0) == 0, "end failed");
  }
  static void Put(uint8_t* place, size_t value) {
    place[0] = static_cast<uint8_t>(value);
    place[1] = static_cast<uint8_t>(value >> 8);
  }
  void SetPath() { std::snprintf(reinterpret_cast<char*>(key_), sizeof key_, "%s", path_.c_str()); }

  std::string path_;
  uint8_t block_[128] = {};
  uint8_t key_[255] = {};
  uint32_t length_ = 0;
};

// The same trees by hand: a table of records by position, one tree a key.
class HandTrees : public HandStore {
 public:
  // A new one, with the first `count` records.
  HandTrees(const std::string& path, uint32_t count) : HandStore(path, true) {
    Run("PRAGMA synchronous=FULL");  // a commit is on stable storage, as after End
    Run("CREATE TABLE IF NOT EXISTS rec(pos INTEGER PRIMARY KEY, ver INTEGER, data BLOB)");
    for (size_t key = 0; key < std::size(kKeys); ++key) {
      Run("CREATE TABLE IF NOT EXISTS k" + std::to_string(key) +
          "(e BLOB PRIMARY KEY, pos INTEGER) WITHOUT ROWID");
    }
    InsertAll(count);
  }

 private:
  void InsertAll(uint32_t count) {
    Run("BEGIN IMMEDIATE");
    sqlite3_stmt* records = Prepare("INSERT INTO rec VALUES(?,1,?)");
    sqlite3_stmt* keys[std::size(kKeys)];
    for (size_t key = 0; key < std::size(kKeys); ++key) {
      keys[key] = Prepare("INSERT INTO k" + std::to_string(key) + " VALUES(?,?)");
    }
    for (uint32_t number = 0; number < count; ++number) {
      const Record record = MakeRecord(number);
      sqlite3_bind_int64(records, 1, number + 1);
      sqlite3_bind_blob(records, 2, record.data(), kRecordLength, SQLITE_STATIC);
      Do(records);
      for (size_t key = 0; key < std::size(kKeys); ++key)
        InsertKey(keys[key], kKeys[key], record, number);
    }
    sqlite3_finalize(records);
    for (sqlite3_stmt* statement : keys) sqlite3_finalize(statement);
    Run("COMMIT");
  }
  static void InsertKey(sqlite3_stmt* statement, const KeyPart& part, const Record& record,
                        uint32_t number) {
    uint8_t entry[64];
    std::memcpy(entry, &record[part.offset], part.length);
    int length = part.length;
    if (!part.unique) {  // the duplicate's number, big-endian
      for (int byte = 0; byte < 8; ++byte) {
        entry[length++] = static_cast<uint8_t>(uint64_t{number} >> (56 - 8 * byte));
      }
    }
    sqlite3_bind_blob(statement, 1, entry, length, SQLITE_STATIC);
    sqlite3_bind_int64(statement, 2, number + 1);
    Do(statement);
  }
};

inline constexpr uint32_t kRecords = 100000;

inline BtrieveFile& Ours() {
  static BtrieveFile file(Workplace() + "/ours.btr", kRecords);
  return file;
}

inline HandTrees& ByHand() {
  static HandTrees store(Workplace() + "/hand.db", kRecords);
  return store;
}

}  // namespace bench
