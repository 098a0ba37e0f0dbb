// The tables of a data file and the marks in its header; docs/record-manager-storage.md tells the
// layout.
#pragma once

#include <cstdint>
#include <string>

namespace btrieve {

inline constexpr uint32_t kFileMark = 0x51425446;  // "QBTF", SQLite's application id
inline constexpr uint32_t kFileFormat = 1;         // SQLite's user version

// Each exactly as it stands in the schema, which an Open compares with it.
inline constexpr const char* kTables[] = {
    "CREATE TABLE spec(id INTEGER PRIMARY KEY, body BLOB NOT NULL, ids BLOB NOT NULL, owner BLOB)",
    "CREATE TABLE head(id INTEGER PRIMARY KEY, n BLOB NOT NULL)",
    "CREATE TABLE rec(pos INTEGER PRIMARY KEY, ver INTEGER NOT NULL, num BLOB, data BLOB NOT NULL)",
    "CREATE TABLE range(k INTEGER, low BLOB, n INTEGER NOT NULL, PRIMARY KEY(k, low)) WITHOUT "
    "ROWID",
    "CREATE TABLE intent(tx BLOB PRIMARY KEY, coordinator BLOB NOT NULL) WITHOUT ROWID",
    "CREATE TABLE redo(tx BLOB, file BLOB, pos INTEGER, num BLOB, data BLOB, "
    "PRIMARY KEY(tx, file, pos)) WITHOUT ROWID",
};
inline constexpr int kLongestRow = 1 << 17;  // bytes; well above a record and its numbers

inline std::string EntryTable(uint16_t id) { return "k" + std::to_string(id); }

inline std::string EntryTableText(uint16_t id) {
  return "CREATE TABLE " + EntryTable(id) +
         "(e BLOB PRIMARY KEY, pos INTEGER NOT NULL) WITHOUT ROWID";
}

inline std::string MakeEntryTable(uint16_t id) {
  return EntryTableText(id) + "; INSERT INTO range VALUES(" + std::to_string(id) + ", x'', 0);";
}

}  // namespace btrieve
