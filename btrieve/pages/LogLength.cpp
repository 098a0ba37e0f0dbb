#include "btrieve/pages/LogLength.h"

#include "btrieve/pages/Sqlite.h"
#include "btrieve/sqlite/SqlitePages.h"

namespace btrieve {
namespace {

constexpr uint32_t kVeryLongLog = 3 * kLongLog;
constexpr int kReadersLeave = 50;  // milliseconds

// Places in the index, which all SQLite versions of its format share.
constexpr size_t kPagesAt = 16;
constexpr size_t kCarriedAt = 96;

uint32_t NumberAt(SharedLogHead head, size_t offset) noexcept {
  const auto* bytes = reinterpret_cast<const volatile uint8_t*>(head);
  return *reinterpret_cast<const volatile uint32_t*>(bytes + offset);
}

}  // namespace

uint32_t PagesInLog(SharedLogHead head) noexcept { return NumberAt(head, kPagesAt); }
uint32_t PagesCarriedOver(SharedLogHead head) noexcept { return NumberAt(head, kCarriedAt); }

// A state that was read when all was carried over needs the file alone: the log may begin anew
// beside it, and only later pages cannot be carried over.
bool HoldsUpLog(sqlite3* connection, SharedLogHead head) noexcept {
  if (!head) return false;
  const uint32_t pages = PagesInLog(head);
  return pages > kLongLog && (sqlite_reads_log(connection) || PagesCarriedOver(head) < pages);
}

void LogCarrier::AfterCommit(sqlite3* connection) noexcept {
  const SharedLogHead head = LogHeadOf(connection);
  if (!head) return;
  const uint32_t pages = PagesInLog(head);
  if (pages < pagesAtLast_) {
    pagesAtLast_ = 0;
    behind_ = false;
  }
  if (pages - pagesAtLast_ < kLongLog) return;
  const bool veryLong = pages >= kVeryLongLog;
  Carry(connection, pages, veryLong ? SQLITE_CHECKPOINT_RESTART : SQLITE_CHECKPOINT_PASSIVE);
}

void LogCarrier::TryAgain(sqlite3* connection) noexcept {
  const SharedLogHead head = LogHeadOf(connection);
  if (head) Carry(connection, PagesInLog(head), SQLITE_CHECKPOINT_PASSIVE);
}

void LogCarrier::Carry(sqlite3* connection, uint32_t pages, int mode) noexcept {
  pagesAtLast_ = pages;
  int inLog = 0;
  int carried = 0;
  sqlite3_busy_timeout(connection, kReadersLeave);
  const int result = sqlite3_wal_checkpoint_v2(connection, "main", mode, &inLog, &carried);
  sqlite3_busy_timeout(connection, kBusyMilliseconds);
  behind_ = result != SQLITE_OK || carried < inLog;
}

}  // namespace btrieve
