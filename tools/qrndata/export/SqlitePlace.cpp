// Tables into one SQLite database.
#include <sqlite3.h>

#include <memory>
#include <new>

#include "btrieve/pages/CheckedVfs.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/OutputFile.h"
#include "tools/qrndata/Paths.h"
#include "tools/qrndata/Text.h"
#include "tools/qrndata/export/SqliteShape.h"
#include "tools/qrndata/export/TypedValue.h"

namespace qrndata {

namespace {

struct CloseDatabase {
  void operator()(sqlite3* database) const noexcept { sqlite3_close(database); }
};
struct FinalizeStatement {
  void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
};
using Database = std::unique_ptr<sqlite3, CloseDatabase>;
using Statement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

// A statement's parameter is given a value as SQLite's users write it.
struct Binder {
  sqlite3_stmt* statement;
  int place;

  void operator()(NoValue) const { sqlite3_bind_null(statement, place); }
  void operator()(int64_t number) const { sqlite3_bind_int64(statement, place, number); }
  void operator()(double number) const { sqlite3_bind_double(statement, place, number); }
  void operator()(bool truth) const { sqlite3_bind_int(statement, place, truth ? 1 : 0); }
  void operator()(const DateValue& date) const {
    (*this)(Printed("%04d-%02d-%02d", date.year, date.month, date.day));
  }
  void operator()(const TimeValue& time) const {
    const std::string text = Printed("%02d:%02d:%02d", time.hours, time.minutes, time.seconds);
    (*this)(time.hundredths == 0 ? text : text + Printed(".%02d", time.hundredths));
  }
  void operator()(const std::string& text) const {
    sqlite3_bind_text64(statement, place, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  }
};

class SqliteWriter : public RecordWriter {
 public:
  SqliteWriter(sqlite3* database, const Table& table, Statement insert)
      : database_(database), table_(table), insert_(std::move(insert)) {}

  std::string Write(const TextValues& values) override {
    for (size_t slot = 0; slot < values.size(); ++slot) {
      std::visit(Binder{insert_.get(), static_cast<int>(slot) + 1},
                 TypedValueOf(table_.fields[slot], values[slot]));
    }
    const int result = sqlite3_step(insert_.get());
    sqlite3_reset(insert_.get());
    if (result == SQLITE_DONE) return {};
    if ((result & 0xFF) == SQLITE_CONSTRAINT) return Say(Message::PrimaryKeyTaken);
    throw Failure(kSystem, sqlite3_errmsg(database_));
  }

 private:
  sqlite3* database_;
  const Table& table_;
  Statement insert_;
};

class SqlitePlace : public ExportPlace {
 public:
  SqlitePlace(const ExportOptions& options, const Streams& streams)
      : streams_(streams), name_(PathToUtf8(options.output)), file_(options.output) {
    if (file_.IsDirect()) file_.Fail();
    // It starts SQLite, too, which the record manager in this program sets up its own way.
    if (!btrieve::RegisterCheckedVfs()) throw std::bad_alloc();
    sqlite3* database = nullptr;
    const int result = sqlite3_open_v2(PathToUtf8(file_.Path()).c_str(), &database,
                                       SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    database_.reset(database);
    if (result != SQLITE_OK) file_.Fail();
    // Nobody looks at it before it is whole: a journal is for statements that are refused.
    Do("PRAGMA journal_mode=MEMORY");
    Do("PRAGMA cache_size=-65536");
    Do("BEGIN");
    file_.KeepPermissions();
  }

  RecordWriter& Next(const ExportedTable& table) override {
    EndTable();
    shape_ = ShapeOf(table, names_);
    table_ = Show(table.table.name);
    Do(shape_.create);
    sqlite3_stmt* insert = nullptr;
    Require(sqlite3_prepare_v2(database_.get(), shape_.insert.c_str(), -1, &insert, nullptr));
    writer_ = std::make_unique<SqliteWriter>(database_.get(), table.table, Statement(insert));
    return *writer_;
  }

  void Finish() override {
    EndTable();
    Do("COMMIT");
    if (sqlite3_close(database_.release()) != SQLITE_OK) file_.Fail();
    file_.Finish();
  }

 private:
  // Bytes that are told apart by the record manager can be one text.
  void EndTable() {
    writer_.reset();
    for (const SqlIndex& index : shape_.indexes) {
      if (index.isUnique && Try("CREATE UNIQUE INDEX " + index.onColumns) == SQLITE_OK) continue;
      if (index.isUnique) {
        streams_.err << Say(Message::NotUniqueThere, table_, index.key,
                            sqlite3_errmsg(database_.get()))
                     << '\n';
      }
      Do("CREATE INDEX " + index.onColumns);
    }
    shape_ = {};
  }

  int Try(const std::string& sql) {
    return sqlite3_exec(database_.get(), sql.c_str(), nullptr, nullptr, nullptr);
  }
  void Do(const std::string& sql) { Require(Try(sql)); }
  void Require(int result) {
    if (result == SQLITE_OK) return;
    throw Failure(kSystem, name_ + ": " + sqlite3_errmsg(database_.get()));
  }

  const Streams& streams_;
  std::string name_, table_;
  SideFile file_;
  Database database_;  // closed before the file is left
  SqlNames names_;
  SqlShape shape_;
  std::unique_ptr<SqliteWriter> writer_;
};

}  // namespace

std::unique_ptr<ExportPlace> MakeSqlitePlace(const ExportOptions& options, const Streams& streams) {
  return std::make_unique<SqlitePlace>(options, streams);
}

}  // namespace qrndata
