// A walk by a client of the flat interface, five fields read of each record, beside one statement
// by hand on SQLite that walks the same records and asks for the same five columns as text.

#include "HandStore.h"
#include "Ratios.h"
#include "core/DbEngine.h"
#include "core/FlatState.h"
#include "platform/Bstr.h"
#include "qrnbt350.h"
#include "tests/support/MadeDatabase.h"

namespace bench {
namespace {

constexpr int kRecords = 50000;
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

qrndata::FieldValues Order(int number) {
  const std::string text = std::to_string(number);
  return {text,
          kCustomer,
          "2024/03/" + std::to_string(1 + number % 28),
          std::to_string(number * 7) + ".50",
          text,
          ""};
}

// The table of the flat interface, open.
qrn::DbTableInfo& Orders() {
  static qrn::DbTableInfo& table = []() -> qrn::DbTableInfo& {
    const std::string& directory = Workplace();
    qrn::test::MakeDatabase(directory, kSchema);
    qrn::test::FillTable(directory, "Orders", kRecords, Order);
    Check(::DbInitialize(directory.c_str()) == 0, "the dictionary does not load");
    Check(::DbOpen(kTable) == 0, "the table does not open");
    return qrn::TheFlatState().CurrentDictionary->Tables[kTable];
  }();
  return table;
}

void WalkFlat(void (*take)(void* text)) {
  int count = 0;
  for (int32_t status = ::DbAccess(BtrOpGetFirst, kTable, kByNumber); status == 0;
       status = ::DbAccess(BtrOpGetNext, kTable, kByNumber)) {
    for (int16_t field = 0; field < 5; ++field) take(::DbGetFieldData(kTable, field));
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

// The types that SQL has for such fields: numbers are stored as numbers and asked for as text.
constexpr char kHandTable[] =
    "CREATE TABLE Orders(OrderNo INTEGER PRIMARY KEY, Customer TEXT, OrderDate TEXT, Total NUMERIC,"
    " Lines INTEGER, Remark TEXT)";
constexpr char kHandRow[] =
    "INSERT INTO Orders VALUES(?1, '\u682A\u5F0F\u4F1A\u793E\u9752\u8449\u5546\u4E8B',"
    " printf('2024/03/%02d', 1 + ?1 % 28), ?1 * 7 + 0.5, ?1, '')";

class HandOrders : public HandStore {
 public:
  HandOrders() : HandStore(Workplace() + "/hand.db", false) {
    Run("PRAGMA journal_mode=WAL");
    Run("PRAGMA cache_size=-49152");  // as much as the record manager takes
    Run(kHandTable);
    Run("BEGIN");
    sqlite3_stmt* insert = Prepare(kHandRow);
    for (int number = 0; number < kRecords; ++number) {
      sqlite3_bind_int(insert, 1, number);
      Do(insert);
    }
    sqlite3_finalize(insert);
    Run("COMMIT");
  }
};

void ByHand() {
  static HandOrders orders;
  sqlite3_stmt* walk =
      orders.Prepare("SELECT OrderNo, Customer, OrderDate, Total, Lines FROM Orders ORDER BY 1");
  int count = 0;
  for (; sqlite3_step(walk) == SQLITE_ROW; ++count) {
    for (int column = 0; column < 5; ++column) {
      Check(sqlite3_column_text(walk, column) != nullptr, "a column by hand has no text");
    }
  }
  sqlite3_finalize(walk);
  Check(count == kRecords, "the walk by hand went wrong");
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  using namespace bench;
  // The files are made before anything is timed.
  Orders();
  ByHand();
  Figure("flat get-next with five fields, over a statement with five texts by hand", 2.0, Flat,
         ByHand, 9);
  Figure("the same with the texts in one area (fix_str_addr)", 2.0, FlatInOneArea, ByHand, 9);
  return RunRatios(argc, argv);
}
