// A store that is kept by hand on SQLite's C interface: the yardstick of what stands on it.
#pragma once

#include <sqlite3.h>

#include <string>

#include "btrieve/pages/CheckedVfs.h"
#include "tests/bench/Measure.h"
#include "tests/support/Pinned.h"

namespace bench {

class HandStore : qrn::test::Pinned {
 public:
  // A new file; with checksums of its pages and a log, as the record manager's files have them, or
  // as SQLite makes one.
  HandStore(const std::string& path, bool likeOurs) {
    Check(likeOurs ? btrieve::RegisterCheckedVfs() : sqlite3_initialize() == SQLITE_OK,
          "SQLite could not start");
    Check(sqlite3_open(path.c_str(), &db_) == SQLITE_OK, "SQLite could not open its file");
    if (likeOurs) Run("PRAGMA journal_mode=WAL");
  }
  ~HandStore() { sqlite3_close(db_); }

  void Run(const std::string& sql) {
    Check(sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK, sql.c_str());
  }
  // The caller's to finalize.
  sqlite3_stmt* Prepare(const std::string& sql) {
    sqlite3_stmt* statement = nullptr;
    Check(sqlite3_prepare_v2(db_, sql.c_str(), -1, &statement, nullptr) == SQLITE_OK, sql.c_str());
    return statement;
  }
  // Carries out a statement without an answer, ready for the next values.
  static void Do(sqlite3_stmt* statement) {
    Check(sqlite3_step(statement) == SQLITE_DONE, "an insert by hand failed");
    sqlite3_reset(statement);
  }

 private:
  sqlite3* db_ = nullptr;
};

}  // namespace bench
