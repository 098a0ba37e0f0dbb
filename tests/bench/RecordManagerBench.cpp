// The record manager beside the same work done by hand on SQLite.

#include "Records.h"

namespace bench {
namespace {

template <int8_t kKey>
void WalkOurs() {
  BtrieveFile& file = Ours();
  Record record;
  uint32_t count = 0;
  for (int status = file.Call(12, record.data(), kRecordLength, kKey); status == 0;
       status = file.Call(6, record.data(), kRecordLength, kKey)) {
    ++count;
  }
  Check(count == kRecords, "the walk missed records");
}

// Two statements, one along the key's tree and one for the record, as a program would write it that
// has records and keys in trees of their own.
template <int8_t kKey>
void WalkByHand() {
  HandStore& store = ByHand();
  sqlite3_stmt* walk = store.Prepare("SELECT e, pos FROM k" + std::to_string(kKey) + " ORDER BY e");
  sqlite3_stmt* fetch = store.Prepare("SELECT ver, data FROM rec WHERE pos=?");
  Record record;
  uint8_t key[64];
  uint32_t count = 0;
  while (sqlite3_step(walk) == SQLITE_ROW) {
    std::memcpy(key, sqlite3_column_blob(walk, 0), sqlite3_column_bytes(walk, 0));
    sqlite3_bind_int64(fetch, 1, sqlite3_column_int64(walk, 1));
    if (sqlite3_step(fetch) != SQLITE_ROW) break;
    std::memcpy(record.data(), sqlite3_column_blob(fetch, 1), sqlite3_column_bytes(fetch, 1));
    sqlite3_reset(fetch);
    ++count;
  }
  sqlite3_finalize(fetch);
  sqlite3_finalize(walk);
  Check(count == kRecords, "the walk by hand missed records");
}

void BulkOurs() {
  static int run = 0;
  BtrieveFile file(Workplace() + "/bulk" + std::to_string(++run) + ".btr", kRecords);
  file.Close();
}

void BulkByHand() {
  static int run = 0;
  const HandTrees store(Workplace() + "/bulk" + std::to_string(++run) + ".db", kRecords);
}

// Percentages of records spread over a file of `count`.
template <uint32_t kCount>
void Percentages() {
  static BtrieveFile file(Workplace() + "/percent" + std::to_string(kCount) + ".btr", kCount);
  Record record;
  for (uint32_t step = 0; step < 2000; ++step) {
    const uint16_t wanted = static_cast<uint16_t>(step * 5 % 10001);
    std::memcpy(record.data(), &wanted, 2);
    Check(file.Call(44, record.data(), kRecordLength, 0) == 0, "get by percentage failed");
    uint32_t found = 0;
    Check(file.Call(45, &found, 4, 0) == 0, "find percentage failed");
    Check(found + 1 >= wanted && found <= wanted + 1u, "the percentage is wrong");
  }
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  using namespace bench;
  Figure("get-next along a unique key, over the walk by hand in two statements", 0.6, WalkOurs<0>,
         WalkByHand<0>, 9);
  Figure("get-next along a key with duplicates, over the same by hand", 0.6, WalkOurs<1>,
         WalkByHand<1>, 9);
  Figure("bulk insert inside a transaction, over SQLite by hand", 1.3, BulkOurs, BulkByHand, 9);
  Figure("percentage in 1,000,000 records, over 10,000", 2.0, Percentages<1000000>,
         Percentages<10000>);
  return RunRatios(argc, argv);
}
