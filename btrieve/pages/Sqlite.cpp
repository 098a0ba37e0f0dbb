#include "btrieve/pages/Sqlite.h"

#include <new>

namespace btrieve {

Status CaughtStatus() noexcept {
  try {
    throw;
  } catch (const Failure& failure) {
    return failure.status;
  } catch (const std::bad_alloc&) {
    return kNoCacheBuffer;
  } catch (...) {
    return kProgrammingError;
  }
}

Status StatusOfResult(int result) noexcept {
  switch (result & 0xFF) {
    case SQLITE_FULL:
      return kDiskFull;
    case SQLITE_NOMEM:
      return kNoCacheBuffer;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_PROTOCOL:  // another process stands still where it holds the log's index
      return kFileInUse;
    case SQLITE_READONLY:
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
    case SQLITE_AUTH:
      return kPermissionError;
    default:
      return kIoError;
  }
}

void ThrowResult(int result) { throw Failure{StatusOfResult(result)}; }

Statement::Statement(sqlite3* connection, const std::string& sql) {
  if (!connection) ThrowResult(SQLITE_MISUSE);
  sqlite3_stmt* statement = nullptr;
  const int result = sqlite3_prepare_v3(connection, sql.c_str(), static_cast<int>(sql.size() + 1),
                                        SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
  if (result != SQLITE_OK) ThrowResult(result);
  statement_.reset(statement);
}

void Statement::Bind(int place, int64_t value) {
  if (const int result = sqlite3_bind_int64(statement_.get(), place, value)) ThrowResult(result);
}

void Statement::Bind(int place, ByteView bytes) {
  // An empty view may have no address, which SQLite would take for null.
  const void* data = bytes.empty() ? static_cast<const void*>("") : bytes.data();
  if (const int result =
          sqlite3_bind_blob64(statement_.get(), place, data, bytes.size(), SQLITE_STATIC)) {
    ThrowResult(result);
  }
}

bool Statement::Step() {
  const int result = sqlite3_step(statement_.get());
  if (result == SQLITE_ROW) return true;
  if (result != SQLITE_DONE) ThrowResult(result);
  return false;
}

bool Statement::TryInsert() {
  const int result = sqlite3_step(statement_.get());
  if (result == SQLITE_DONE) return true;
  if ((result & 0xFF) != SQLITE_CONSTRAINT) ThrowResult(result);
  return false;
}

void Statement::Reset() noexcept { sqlite3_reset(statement_.get()); }

ByteView Statement::Bytes(int column) const noexcept {
  const auto* bytes = static_cast<const uint8_t*>(sqlite3_column_blob(statement_.get(), column));
  return {bytes, bytes ? static_cast<size_t>(sqlite3_column_bytes(statement_.get(), column)) : 0};
}

Connection::Connection(const std::string& name, int flags) {
  sqlite3* connection = nullptr;
  const int result = sqlite3_open_v2(name.c_str(), &connection, flags, "btrieve");
  connection_.reset(connection);
  if (result != SQLITE_OK) ThrowResult(result);
  sqlite3_extended_result_codes(connection, 1);
}

void Connection::Run(const char* sql) const {
  if (const int result = sqlite3_exec(Get(), sql, nullptr, nullptr, nullptr)) ThrowResult(result);
}

}  // namespace btrieve
