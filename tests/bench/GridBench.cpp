// A grid filled with 60,000 records of five fields beside the same records read by one loop of
// SQLite's calls written by hand into texts, and beside a grid of half as many.

#include <sqlite3.h>

#include <charconv>
#include <cstring>
#include <memory>

#include "Ratios.h"
#include "btrieve/pages/CheckedVfs.h"
#include "core/Dictionary.h"
#include "core/DictionaryLookup.h"
#include "core/Table.h"
#include "tests/grid/PlayedGrid.h"
#include "tools/qrndata/Builder.h"
#include "tools/qrndata/Dictionary.h"
#include "tools/qrndata/RowImporter.h"
#include "tools/qrndata/Schema.h"

namespace bench {
namespace {

constexpr int kRecords = 60000;

constexpr char kFields[] = R"(
field = [
  { name = "No", type = "Integer", size = 4 },
  { name = "Day", type = "Date" },
  { name = "Item", type = "String", size = 30 },
  { name = "Town", type = "String", size = 12 },
  { name = "Count", type = "Integer", size = 2 },
]
key = [ { name = "ByNo", fields = ["No"] } ]
)";

// The database on disk, its tables open: "All" of 60,000 records, "Half" of as many as that.
class Database {
 public:
  Database() {
    const std::string& directory = Workplace();
    const std::string schema =
        std::string("[[table]]\nname = \"All\"") + kFields + "[[table]]\nname = \"Half\"" + kFields;
    qrndata::BuildDatabase(qrndata::ParseSchema(schema, "schema", directory), directory,
                           qrndata::Existing::Replace);
    const qrndata::Dictionary dictionary = qrndata::ReadDictionary(directory);
    Import(dictionary, 0, kRecords);
    Import(dictionary, 1, kRecords / 2);
    Check(qrn::DbDictLoad(settings_, directory.c_str(), &dictionary_) == 0, "no dictionary");
    Check(qrn::DbOpenAllTables(engine_, *dictionary_, directory.c_str(), "", 0) == 0,
          "the tables do not open");
  }
  qrn::DbTableInfo* Table(const std::string& name) {
    return qrn::DbFindTable(*dictionary_, name.c_str());
  }
  qrn::DbEngine& Engine() { return engine_; }

 private:
  static void Import(const qrndata::Dictionary& dictionary, size_t table, int records) {
    qrndata::RowImporter importer(dictionary.directory, dictionary.tables[table], 10000);
    for (int number = 0; number < records; ++number) {
      const std::string text = std::to_string(number);
      qrndata::FieldValues values = {text, "2024/03/01", "article number " + text, "Kyoto",
                                     std::to_string(number % 500)};
      Check(!importer.Put(values), "a record was refused");
    }
    importer.Finish();
  }

  qrn::QuorinSettings settings_;
  qrn::DbEngine engine_{settings_};
  qrn::DbDictionary* dictionary_ = nullptr;
};

Database& TheDatabase() {
  static Database database;
  return database;
}

class FilledGrid {
 public:
  explicit FilledGrid(const char* table)
      : grid_({.maxRows = 65000, .maxCols = 64}, &TheDatabase().Engine()) {
    grid_.names = {.source = "Db",
                   .table = table,
                   .index = "ByNo",
                   .fields = "No,Day,Item,Town,Count",
                   .conditions = ""};
    grid_.findTable = [](const qrn::GridNames& names) { return TheDatabase().Table(names.table); };
    grid_.model.Create();
  }

  void Fill(int records) {
    grid_.data.ReloadList();
    Check(grid_.model.Rows == records + 1, "the grid is not full");
    Check(grid_.Cell(2, 3) == "article number 1", "the grid shows something else");
  }

 private:
  qrn::test::PlayedGrid grid_;
};

void FillAll() {
  static FilledGrid grid("All");
  grid.Fill(kRecords);
}

void FillHalf() {
  static FilledGrid grid("Half");
  grid.Fill(kRecords / 2);
}

// The records as they are, in a table by position and a tree of their key.
sqlite3* ByHand() {
  static sqlite3* store = [] {
    sqlite3* db = nullptr;
    Check(btrieve::RegisterCheckedVfs(), "SQLite could not start");
    Check(sqlite3_open((Workplace() + "/hand.db").c_str(), &db) == SQLITE_OK, "no store");
    const auto run = [db](const char* sql) {
      Check(sqlite3_exec(db, sql, nullptr, nullptr, nullptr) == SQLITE_OK, sql);
    };
    run("PRAGMA journal_mode=WAL");
    run("CREATE TABLE rec(pos INTEGER PRIMARY KEY, data BLOB);"
        "CREATE TABLE k0(e BLOB PRIMARY KEY, pos INTEGER) WITHOUT ROWID; BEGIN");
    sqlite3_stmt* record = nullptr;
    sqlite3_stmt* key = nullptr;
    sqlite3_prepare_v2(db, "INSERT INTO rec VALUES(?,?)", -1, &record, nullptr);
    sqlite3_prepare_v2(db, "INSERT INTO k0 VALUES(?,?)", -1, &key, nullptr);
    for (int number = 0; number < kRecords; ++number) {
      char data[52];
      std::memset(data, ' ', sizeof data);
      std::memcpy(data, &number, 4);
      std::memcpy(data + 4, "\x01\x03\xE8\x07", 4);
      const std::string item = "article number " + std::to_string(number);
      std::memcpy(data + 8, item.data(), item.size());
      std::memcpy(data + 38, "Kyoto", 5);
      const auto count = static_cast<int16_t>(number % 500);
      std::memcpy(data + 50, &count, 2);
      const uint8_t entry[4] = {static_cast<uint8_t>(number >> 24),
                                static_cast<uint8_t>(number >> 16),
                                static_cast<uint8_t>(number >> 8), static_cast<uint8_t>(number)};
      sqlite3_bind_int64(record, 1, number + 1);
      sqlite3_bind_blob(record, 2, data, sizeof data, SQLITE_STATIC);
      sqlite3_bind_blob(key, 1, entry, sizeof entry, SQLITE_STATIC);
      sqlite3_bind_int64(key, 2, number + 1);
      for (sqlite3_stmt* each : {record, key}) {
        Check(sqlite3_step(each) == SQLITE_DONE, "an insert by hand failed");
        sqlite3_reset(each);
      }
    }
    sqlite3_finalize(record);
    sqlite3_finalize(key);
    run("COMMIT");
    return db;
  }();
  return store;
}

std::string Trimmed(const char* text, size_t size) {
  while (size > 0 && text[size - 1] == ' ') --size;
  return {text, size};
}

std::string Number(int64_t value) {
  char digits[24];
  return {digits, std::to_chars(digits, std::end(digits), value).ptr};
}

void ReadByHand() {
  sqlite3_stmt* walk = nullptr;
  Check(sqlite3_prepare_v2(ByHand(),
                           "SELECT r.data FROM k0 k CROSS JOIN rec r ON r.pos=k.pos ORDER BY k.e",
                           -1, &walk, nullptr) == SQLITE_OK,
        "the loop by hand");
  std::vector<std::array<std::string, 5>> texts;
  while (sqlite3_step(walk) == SQLITE_ROW) {
    const auto* data = static_cast<const char*>(sqlite3_column_blob(walk, 0));
    int32_t number;
    int16_t count;
    uint16_t year;
    std::memcpy(&number, data, 4);
    std::memcpy(&year, data + 6, 2);
    std::memcpy(&count, data + 50, 2);
    char day[16];
    std::snprintf(day, sizeof day, "%04u/%02d/%02d", year, data[5], data[4]);
    texts.push_back(
        {Number(number), day, Trimmed(data + 8, 30), Trimmed(data + 38, 12), Number(count)});
  }
  sqlite3_finalize(walk);
  Check(texts.size() == kRecords && texts[1][2] == "article number 1", "the loop went wrong");
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  using namespace bench;
  FillAll();  // The files are made before anything is timed.
  FillHalf();
  ReadByHand();
  Figure("60,000 records of five fields into a grid, over a loop by hand into texts", 1.5, FillAll,
         ReadByHand, 15);
  Figure("60,000 records into a grid, over 30,000", 2.2, FillAll, FillHalf, 15);
  return RunRatios(argc, argv);
}
