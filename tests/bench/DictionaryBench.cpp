// How the load of a dictionary grows with its size: twice the tables should take twice the time.

#include <filesystem>

#include "Ratios.h"
#include "core/DbEngine.h"
#include "core/Dictionary.h"
#include "tools/qrndata/Dictionary.h"

namespace bench {
namespace {

constexpr int kTables = 256, kFieldsATable = 98;  // 25,088 fields

std::vector<qrndata::Table> MakeTables(int count) {
  std::vector<qrndata::Table> tables;
  int fieldId = 19;
  for (int number = 0; number < count; ++number) {
    qrndata::Table table;
    table.id = qrndata::kFirstUserTable + number;
    table.name = "Table" + std::to_string(number);
    table.location = table.name + ".btr";
    for (int field = 0; field < kFieldsATable; ++field) {
      table.fields.push_back(qrndata::MakeField("Field" + std::to_string(field), qrn::kString, 10));
      table.fields.back().FileId = table.id;
      table.fields.back().FieldId = fieldId++;
      table.fields.back().Offset = field * 10;
    }
    for (int key = 0; key < 4; ++key) {
      table.keys.emplace_back();
      table.keys.back().segments = {{table.fields[static_cast<size_t>(key * 20)].FieldId, 256, 0}};
    }
    tables.push_back(std::move(table));
  }
  return tables;
}

std::string MakeDictionary(const char* name, int tables) {
  const auto directory = std::filesystem::path(Workplace()) / name;
  std::filesystem::create_directories(directory);
  qrndata::WriteDictionary(directory, MakeTables(tables), true);
  return directory.string();
}

void Load(const std::string& directory, int tables) {
  qrn::DbDictionary* dictionary = nullptr;
  Check(qrn::DbDictLoad(qrn::TheSettings(), directory.c_str(), &dictionary) == 0,
        "the dictionary does not load");
  Check(dictionary->TableCount == tables && dictionary->Tables[0].FieldCount == kFieldsATable &&
            dictionary->Tables[tables - 1].SegmentCount == 4,
        "the dictionary was not loaded whole");
  qrn::DbDictFree(dictionary);
}

void LoadWhole() {
  static const std::string directory = MakeDictionary("whole", kTables);
  Load(directory, kTables);
}

void LoadHalf() {
  static const std::string directory = MakeDictionary("half", kTables / 2);
  Load(directory, kTables / 2);
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  using namespace bench;
  // The files are made before anything is timed.
  LoadWhole();
  LoadHalf();
  Figure("load of 256 tables and 25,000 fields, over that of half as many", 2.2, LoadWhole,
         LoadHalf, 9);
  return RunRatios(argc, argv);
}
