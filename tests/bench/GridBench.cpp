// A grid filled with 60,000 records of five fields beside the same records read by one loop of
// SQLite's calls written by hand into texts, and beside a grid of half as many.

#include <charconv>
#include <cstring>
#include <memory>

#include "HandStore.h"
#include "Ratios.h"
#include "core/Dictionary.h"
#include "core/DictionaryLookup.h"
#include "core/Table.h"
#include "tests/grid/PlayedGrid.h"
#include "tests/support/MadeDatabase.h"

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
    qrn::test::MakeDatabase(directory, std::string("[[table]]\nname = \"All\"") + kFields +
                                           "[[table]]\nname = \"Half\"" + kFields);
    qrn::test::FillTable(directory, "All", kRecords, Row);
    qrn::test::FillTable(directory, "Half", kRecords / 2, Row);
    Check(qrn::DbDictLoad(settings_, directory.c_str(), &dictionary_) == 0, "no dictionary");
    Check(qrn::DbOpenAllTables(engine_, *dictionary_, directory.c_str(), "", 0) == 0,
          "the tables do not open");
  }
  qrn::DbTableInfo* Table(const std::string& name) {
    return qrn::DbFindTable(*dictionary_, name.c_str());
  }
  qrn::DbEngine& Engine() { return engine_; }

 private:
  static qrndata::FieldValues Row(int number) {
    const std::string text = std::to_string(number);
    return {text, "2024/03/01", "article number " + text, "Kyoto", std::to_string(number % 500)};
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
class HandRecords : public HandStore {
 public:
  HandRecords() : HandStore(Workplace() + "/hand.db", true) {
    Run("CREATE TABLE rec(pos INTEGER PRIMARY KEY, data BLOB);"
        "CREATE TABLE k0(e BLOB PRIMARY KEY, pos INTEGER) WITHOUT ROWID; BEGIN");
    sqlite3_stmt* record = Prepare("INSERT INTO rec VALUES(?,?)");
    sqlite3_stmt* key = Prepare("INSERT INTO k0 VALUES(?,?)");
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
      Do(record);
      Do(key);
    }
    sqlite3_finalize(record);
    sqlite3_finalize(key);
    Run("COMMIT");
  }
};

std::string Trimmed(const char* text, size_t size) {
  while (size > 0 && text[size - 1] == ' ') --size;
  return {text, size};
}

std::string Number(int64_t value) {
  char digits[24];
  return {digits, std::to_chars(digits, std::end(digits), value).ptr};
}

void ReadByHand() {
  static HandRecords records;
  sqlite3_stmt* walk =
      records.Prepare("SELECT r.data FROM k0 k CROSS JOIN rec r ON r.pos=k.pos ORDER BY k.e");
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
