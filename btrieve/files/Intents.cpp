#include "btrieve/files/Intents.h"

#include <cstring>

namespace btrieve {
namespace {

TransactionNumber Number(ByteView bytes) { return {bytes.begin(), bytes.end()}; }

uint32_t StartOf(ByteView number) noexcept {
  uint32_t start = 0;
  std::memcpy(&start, number.data(), std::min(sizeof start, number.size()));
  return start;
}

Statement Prepare(DataFile& file, const char* sql) { return file.Base().Link().Prepare(sql); }

}  // namespace

TransactionNumber NewTransactionNumber() {
  TransactionNumber number(16);
  sqlite3_randomness(static_cast<int>(number.size()), number.data());
  return number;
}

uint64_t OwnerByteOf(ByteView number) noexcept { return lockbyte::Owner(StartOf(number)); }
uint64_t SettlerByteOf(ByteView number) noexcept { return lockbyte::Settler(StartOf(number)); }

std::vector<Intent> ReadIntents(DataFile& file) {
  std::vector<Intent> intents;
  Statement rows = Prepare(file, "SELECT tx, coordinator FROM intent");
  while (rows.Step()) intents.push_back({Number(rows.Bytes(0)), TextOf(rows.Bytes(1))});
  return intents;
}

void AddIntent(DataFile& file, const Intent& intent) {
  Statement insert = Prepare(file, "INSERT INTO intent(tx, coordinator) VALUES(?, ?)");
  insert.Bind(1, intent.number);
  insert.Bind(2, ViewOf(intent.coordinator));
  insert.Step();
  file.Base().ChangeIntents(+1);
}

bool RemoveIntent(DataFile& file, const TransactionNumber& number) {
  Statement remove = Prepare(file, "DELETE FROM intent WHERE tx=?");
  remove.Bind(1, number);
  remove.Step();
  if (file.Base().Link().Changes() != 1) return false;
  file.Base().ChangeIntents(-1);
  return true;
}

std::vector<RedoPart> ReadRedoParts(DataFile& coordinator) {
  std::vector<RedoPart> parts;
  Statement rows = Prepare(coordinator, "SELECT DISTINCT tx, file FROM redo");
  while (rows.Step()) parts.push_back({Number(rows.Bytes(0)), TextOf(rows.Bytes(1))});
  return parts;
}

void AddRedo(DataFile& coordinator, const RedoPart& part, const LoggedRecord& record) {
  Statement insert =
      Prepare(coordinator, "INSERT INTO redo(tx, file, pos, num, data) VALUES(?, ?, ?, ?, ?)");
  insert.Bind(1, part.number);
  insert.Bind(2, ViewOf(part.file));
  insert.Bind(3, record.position);
  insert.Bind(4, record.numbers);
  if (!record.deleted) insert.Bind(5, record.image);  // stays null for a deleted one
  insert.Step();
}

void RemoveRedo(DataFile& coordinator, const RedoPart& part) {
  Statement remove = Prepare(coordinator, "DELETE FROM redo WHERE tx=? AND file=?");
  remove.Bind(1, part.number);
  remove.Bind(2, ViewOf(part.file));
  remove.Step();
}

void ForEachRedo(DataFile& coordinator, const RedoPart& part,
                 const std::function<void(const LoggedRecord&)>& action) {
  Statement rows =
      Prepare(coordinator, "SELECT pos, num, data FROM redo WHERE tx=? AND file=? ORDER BY pos");
  rows.Bind(1, part.number);
  rows.Bind(2, ViewOf(part.file));
  while (rows.Step()) {
    action({CheckedPosition(rows.Number(0)), rows.IsNull(2), rows.Bytes(1), rows.Bytes(2)});
  }
}

}  // namespace btrieve
