// SQLite behind handles: a connection, prepared statements, and its failures as our statuses.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "btrieve/system/Status.h"

namespace btrieve {

using ByteView = std::span<const uint8_t>;

// How long SQLite waits for another process: its commit is a matter of milliseconds.
inline constexpr int kBusyMilliseconds = 5000;

// What no caller can act upon on its way up: storage failed (2, 18, 94, 100), or could not be
// reached in time (85). Thrown here, turned into the call's status at the entry.
struct Failure {
  Status status;
};

// The status of a result code of SQLite's that is neither OK, ROW nor DONE.
// Within a handler: the status of what is being handled; 100 without memory.
Status CaughtStatus() noexcept;
Status StatusOfResult(int result) noexcept;
[[noreturn]] void ThrowResult(int result);
// For what is read and cannot have been written.
[[noreturn]] inline void ThrowDamaged() { throw Failure{kIoError}; }

// One prepared statement. Values are bound by reference: they must stay until Reset. Columns are
// valid until the next Step or Reset.
class Statement {
 public:
  Statement() = default;
  // 2, thrown, without a connection: a file of another record manager has none.
  Statement(sqlite3* connection, const std::string& sql);

  explicit operator bool() const noexcept { return statement_ != nullptr; }

  void Bind(int place, int64_t value);
  void Bind(int place, ByteView bytes);
  // True on a row, false at the end. Throws Failure.
  bool Step();
  // Step, where a broken uniqueness is an answer: false.
  bool TryInsert();
  void Reset() noexcept;

  int64_t Number(int column) const noexcept {
    return sqlite3_column_int64(statement_.get(), column);
  }
  ByteView Bytes(int column) const noexcept;
  bool IsNull(int column) const noexcept {
    return sqlite3_column_type(statement_.get(), column) == SQLITE_NULL;
  }

 private:
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
  };
  std::unique_ptr<sqlite3_stmt, Finalize> statement_;
};

// Resets a statement at the end of a scope.
class InUse {
 public:
  explicit InUse(Statement& statement) noexcept : statement_(statement) {}
  ~InUse() { statement_.Reset(); }
  InUse(const InUse&) = delete;
  InUse& operator=(const InUse&) = delete;

  Statement* operator->() noexcept { return &statement_; }
  // Binds from place 1 on and steps once.
  template <class... Values>
  bool Row(const Values&... values) {
    int place = 0;
    (statement_.Bind(++place, values), ...);
    return statement_.Step();
  }

 private:
  Statement& statement_;
};

// One connection, closed with its scope; its statements must be gone by then.
class Connection {
 public:
  Connection() = default;
  // `name` is UTF-8 on Windows, bytes elsewhere. `flags` as sqlite3_open_v2 takes them.
  Connection(const std::string& name, int flags);

  sqlite3* Get() const noexcept { return connection_.get(); }
  Statement Prepare(const std::string& sql) const { return Statement(Get(), sql); }
  void Run(const char* sql) const;
  int64_t Changes() const noexcept { return sqlite3_changes64(Get()); }
  // False once SQLite itself has rolled a transaction back, or none was begun.
  bool InTransaction() const noexcept { return sqlite3_get_autocommit(Get()) == 0; }
  void Close() noexcept { connection_.reset(); }

 private:
  struct Closer {
    void operator()(sqlite3* connection) const noexcept { sqlite3_close(connection); }
  };
  std::unique_ptr<sqlite3, Closer> connection_;
};

}  // namespace btrieve
