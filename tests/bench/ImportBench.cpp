// The data tool's import beside SQLite's: one CSV file into tables with the same three indexes.
// Rows may be told by QRN_BENCH_ROWS.

#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>

#include "HandStore.h"
#include "Ratios.h"
#include "tools/qrndata/Verbs.h"

namespace bench {
namespace {

constexpr char kSchema[] = R"([[table]]
name = "T"
field = [
  { name = "Id", type = "Integer" },
  { name = "Code", type = "String", size = 10 },
  { name = "Name", type = "String", size = 30 },
  { name = "Born", type = "Date" },
  { name = "Total", type = "Decimal", size = 6, decimals = 2 },
]
key = [
  { fields = ["Id"] },
  { fields = ["Code"], duplicates = true, modifiable = true },
  { fields = ["Born"], duplicates = true, modifiable = true },
])";
constexpr char kTable[] =
    "CREATE TABLE t(id INTEGER NOT NULL, code TEXT, name TEXT, born TEXT, total NUMERIC);"
    "CREATE UNIQUE INDEX a ON t(id); CREATE INDEX b ON t(code); CREATE INDEX c ON t(born); BEGIN";

int Rows() {
  const char* told = std::getenv("QRN_BENCH_ROWS");
  return told == nullptr ? 200000 : std::atoi(told);
}

const std::string& CsvFile() {
  static const std::string path = [] {
    std::string file = Workplace() + "/rows.csv";
    std::ofstream out(file, std::ios::binary);
    std::mt19937 random(5);
    out << "Id,Code,Name,Born,Total\n";
    for (int row = 0; row < Rows(); ++row) {
      out << row + 1 << ",C" << random() % 5000000 << ",name of number " << row << ','
          << 1950 + random() % 76 << '/' << 1 + random() % 12 << '/' << 1 + random() % 28 << ','
          << random() % 1000000 << ".25\n";
    }
    Check(static_cast<bool>(out.flush()), "the rows cannot be written");
    return file;
  }();
  return path;
}

void Tool(std::vector<std::string> arguments) {
  std::ostringstream out, err;
  Check(qrndata::RunTool(std::move(arguments), {out, err, nullptr}) == 0, err.str().c_str());
}

void ImportOurs() {
  static int run = 0;
  const std::string folder = Workplace() + "/ours" + std::to_string(++run);
  const std::string schema = Workplace() + "/schema.toml";
  std::ofstream(schema, std::ios::binary) << kSchema;
  Tool({"build", schema, folder});
  Tool({"import", folder, "T", CsvFile()});
}

// Cells without quotes, which is all that the file has.
void BindCells(sqlite3_stmt* insert, const std::string& line) {
  int column = 0;
  for (size_t begin = 0; begin <= line.size();) {
    const size_t end = std::min(line.find(',', begin), line.size());
    sqlite3_bind_text(insert, ++column, line.data() + begin, static_cast<int>(end - begin),
                      SQLITE_STATIC);
    begin = end + 1;
  }
}

void ImportBySqlite() {
  static int run = 0;
  HandStore database(Workplace() + "/sqlite" + std::to_string(++run) + ".db", false);
  database.Run(kTable);
  sqlite3_stmt* insert = database.Prepare("INSERT INTO t VALUES(?,?,?,?,?)");
  std::ifstream rows(CsvFile(), std::ios::binary);
  std::string line;
  std::getline(rows, line);
  while (std::getline(rows, line)) {
    BindCells(insert, line);
    HandStore::Do(insert);
  }
  sqlite3_finalize(insert);
  database.Run("COMMIT");
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  using namespace bench;
  Figure("import of a CSV file with three keys, over SQLite's", 2.0, ImportOurs, ImportBySqlite, 3);
  return RunRatios(argc, argv);
}
