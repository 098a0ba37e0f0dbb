// A walk by a client of the flat interface, five fields read of each record, beside the bare calls
// of the record manager.

#include "Ratios.h"
#include "core/DbEngine.h"
#include "core/FlatInterface.h"
#include "core/FlatState.h"
#include "platform/Bstr.h"
#include "platform/BtrCall.h"
#include "tools/qrndata/Builder.h"
#include "tools/qrndata/Dictionary.h"
#include "tools/qrndata/RowImporter.h"
#include "tools/qrndata/Schema.h"

namespace bench {
namespace {

constexpr int kRecords = 50000;
constexpr int16_t kGetNext = 6, kGetFirst = 12;
constexpr int16_t kTable = 0, kByNumber = 0;

constexpr char kSchema[] = R"([[table]]
name = "Orders"
field = [
  { name = "OrderNo", type = "Integer", size = 4 },
  { name = "Customer", type = "String", size = 40 },
  { name = "OrderDate", type = "Date" },
  { name = "Total", type = "Decimal", size = 6, decimals = 2 },
  { name = "Lines", type = "Numeric", size = 5 },
  { name = "Remark", type = "String", size = 50 },
]
key = [ { fields = ["OrderNo"] } ])";

// "株式会社青葉商事" in code page 932.
constexpr char kCustomer[] = "\x8A\x94\x8E\xAE\x89\xEF\x8E\xD0\x90\xC2\x97\x74\x8F\xA4\x8E\x96";

void Fill(const qrndata::Dictionary& dictionary) {
  qrndata::RowImporter importer(dictionary.directory, dictionary.tables[0], 10000);
  for (int number = 0; number < kRecords; ++number) {
    const std::string day = std::to_string(1 + number % 28);
    qrndata::FieldValues values = {std::to_string(number), kCustomer,
                                   "2024/03/" + day,       std::to_string(number * 7) + ".50",
                                   std::to_string(number), ""};
    Check(!importer.Put(values), "a record was refused");
  }
  importer.Finish();
}

// The table of the flat interface, open.
qrn::DbTableInfo& Orders() {
  static qrn::DbTableInfo& table = []() -> qrn::DbTableInfo& {
    const std::string& directory = Workplace();
    qrndata::BuildDatabase(qrndata::ParseSchema(kSchema, "schema", directory), directory,
                           qrndata::Existing::Replace);
    Fill(qrndata::ReadDictionary(directory));
    Check(qrn::flat::DbInitialize(directory.c_str()) == 0, "the dictionary does not load");
    Check(qrn::flat::DbOpen(kTable) == 0, "the table does not open");
    return qrn::TheFlatState().CurrentDictionary->Tables[kTable];
  }();
  return table;
}

void WalkFlat(void (*take)(void* text)) {
  int count = 0;
  for (int32_t status = qrn::flat::DbAccess(kGetFirst, kTable, kByNumber); status == 0;
       status = qrn::flat::DbAccess(kGetNext, kTable, kByNumber)) {
    for (int16_t field = 0; field < 5; ++field) take(qrn::flat::DbGetFieldData(kTable, field));
    ++count;
  }
  Check(count == kRecords, "the flat walk went wrong");
}

void Flat() {
  qrn::TheSettings().fix_str_addr = 0;
  WalkFlat([](void* text) { qrn::FreeBstr(static_cast<char16_t*>(text)); });
}

void FlatInOneArea() {
  qrn::TheSettings().fix_str_addr = 1;
  WalkFlat([](void*) {});
}

// The same file by the same block, with nothing in between.
void Bare() {
  qrn::DbTableInfo& table = Orders();
  char key[256] = {};
  int count = 0;
  for (uint16_t operation = kGetFirst;; operation = kGetNext, ++count) {
    auto length = static_cast<uint32_t>(table.RecordLength);
    if (qrn::BtrCall(operation, table.PosBlock, table.RecordBuffer, &length, key, sizeof key - 1,
                     0) != 0) {
      break;
    }
  }
  Check(count == kRecords, "the bare walk went wrong");
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  using namespace bench;
  Bare();  // The file is made before anything is timed.
  Figure("flat get-next with five fields read as strings, over the bare call", 1.25, Flat, Bare);
  Figure("the same with the texts in one area (fix_str_addr)", 1.25, FlatInOneArea, Bare);
  return RunRatios(argc, argv);
}
