// A program of a user's: it walks a small company's data through the flat interface and tells what
// it does. The argument is the folder of the dictionary and its data files.
//
// Tables are numbered in the dictionary's order, keys by the place of their first segment.

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "FlatApi.h"

namespace tour {
namespace {

enum Operation : int16_t {
  kInsert = 2,
  kUpdate = 3,
  kDelete = 4,
  kGetEqual = 5,
  kGetNext = 6,
  kGetFirst = 12,
  kGetNextExtended = 36,
};

// Places of the keys of Customers: its first is one segment, its second one, its third two.
constexpr int16_t kByCustomer = 0;
constexpr int16_t kByKana = 1;
// And the first of Orders.
constexpr int16_t kByOrder = 0;

constexpr int16_t kRejectCount = 60;
constexpr int32_t kWholeFile = 10000;  // as a percentage
constexpr int32_t kShownOrders = 6;

void Say(const std::string& text) { std::printf("%s\n", text.c_str()); }
void Title(const std::string& text) { std::printf("\n--- %s\n", text.c_str()); }

std::string InWords(int status) {
  static const std::pair<int, const char*> kWords[] = {
      {0, "done"},
      {kRejectCount, "the reject count was reached"},
      {4, "no record has that key value (該当レコードがみつかりません)"},
      {5, "the key value is there already (キーの値が重複しています)"},
      {8, "there is no current record (現在レコードがありません)"},
      {9, "the end of the file (ファイルの先頭または最後です)"},
      {-2, "the table is open already"},
      {-3, "the table is not open"},
      {-15, "there is no table of that number"},
      {-21, "no directory was given"},
  };
  for (const auto& [code, words] : kWords) {
    if (code == status) return words;
  }
  return "status " + std::to_string(status);
}

// DbInitialize widens its 16-bit status without the sign: -21 comes as 65515.
int16_t SignedStatus(int32_t result) { return static_cast<int16_t>(result); }

class Tour {
 public:
  explicit Tour(const std::string& directory) : directory_(directory) {}

  int Run() {
    if (!OpenDictionary()) return 1;
    ShowTables();
    customers_ = TableNamed("Customers");
    orders_ = TableNamed("Orders");
    Must(api_.DbOpen(customers_), "open Customers");
    Must(api_.DbOpen(orders_), "open Orders");
    WalkByKana();
    FindByNumber();
    AbortedTransaction();
    EndedTransaction();
    JumpByPercentage();
    FilteredRead();
    ShowFailures();
    Must(api_.DbClose(orders_), "close Orders");
    Must(api_.DbClose(customers_), "close Customers");
    Must(api_.DbTerminate(), "terminate");
    Say("\nThe tour is over: every step gave what it should.");
    return 0;
  }

 private:
  // A step that has to work ends the tour when it does not.
  void Must(int status, const char* step) {
    if (status == 0) return;
    std::printf("%s: %s\n", step, InWords(status).c_str());
    std::exit(1);
  }
  void MustBe(bool condition, const char* what) {
    if (condition) return;
    std::printf("not as it should be: %s\n", what);
    std::exit(1);
  }

  bool OpenDictionary() {
    unsigned char version[5] = {};
    Must(api_.DbGetVersion(version), "version");
    std::printf("record manager %d.%d%c\n", version[0] + 256 * version[1],
                version[2] + 256 * version[3], version[4]);
    const int32_t status = SignedStatus(api_.DbInitialize(ToCodePage(directory_).c_str()));
    std::printf("DbInitialize(\"%s\"): %s\n", directory_.c_str(), InWords(status).c_str());
    return status == 0;
  }

  void ShowTables() {
    Title("the dictionary: tables and their fields");
    for (int16_t table = 0; table < api_.DbGetNumOfTable(); ++table) {
      // A closed table does not tell the names of its fields.
      Must(api_.DbOpen(table), "open");
      std::string fields;
      for (int16_t field = 0; field < api_.DbGetNumOfField(table); ++field) {
        fields += (field == 0 ? "" : ", ") + TakeByteText(api_.DbGetFieldName(table, field));
      }
      int32_t count = 0;
      Must(api_.DbGetNumOfRecords(table, &count), "count records");
      std::printf("%2d %-12s %6d records: %s\n", table,
                  TakeByteText(api_.DbGetTableName(table)).c_str(), count, fields.c_str());
      Must(api_.DbClose(table), "close");
    }
  }

  int16_t TableNamed(const std::string& name) {
    for (int16_t table = 0; table < api_.DbGetNumOfTable(); ++table) {
      if (TakeByteText(api_.DbGetTableName(table)) == name) return table;
    }
    std::printf("the dictionary has no table %s\n", name.c_str());
    std::exit(1);
  }

  int16_t FieldNamed(int16_t table, const std::string& name) {
    for (int16_t field = 0; field < api_.DbGetNumOfField(table); ++field) {
      if (TakeByteText(api_.DbGetFieldName(table, field)) == name) return field;
    }
    std::printf("there is no field %s\n", name.c_str());
    std::exit(1);
  }

  std::string Get(int16_t table, const char* field) {
    return TakeWideText(api_.DbGetFieldData(table, FieldNamed(table, field)));
  }
  void Set(int16_t table, const char* field, const std::string& text) {
    Must(api_.DbSetFieldData(table, FieldNamed(table, field), ToCodePage(text).c_str()), field);
  }
  void PrintCustomer() {
    std::printf("  %6s  %s  (%s)  %s%s\n", Get(customers_, "CustomerNo").c_str(),
                Get(customers_, "Name").c_str(), Get(customers_, "Kana").c_str(),
                Get(customers_, "Prefecture").c_str(), Get(customers_, "Address").c_str());
  }
  int32_t Customers() {
    int32_t count = 0;
    Must(api_.DbGetNumOfRecords(customers_, &count), "count customers");
    return count;
  }

  void WalkByKana() {
    Title("the first customers by their reading (Get First, Get Next along ByKana)");
    int32_t status = api_.DbAccess(kGetFirst, customers_, kByKana);
    for (int row = 0; row < 6 && status == 0; ++row) {
      PrintCustomer();
      status = api_.DbAccess(kGetNext, customers_, kByKana);
    }
    Must(status, "walk by reading");
  }

  void FindByNumber() {
    Title("customer number 42 (Get Equal on ByCustomer; the record buffer is the key)");
    Must(api_.DbClearFieldBuffer(customers_), "clear the buffer");
    Set(customers_, "CustomerNo", "42");
    Must(api_.DbAccess(kGetEqual, customers_, kByCustomer), "find customer 42");
    PrintCustomer();
    MustBe(Get(customers_, "CustomerNo") == "42", "the customer found");
  }

  void FillNewCustomer() {
    Must(api_.DbClearFieldBuffer(customers_), "clear the buffer");
    Set(customers_, "Name", "株式会社 北斗ソフト能登表具");
    Set(customers_, "Kana", "ホクトソフトノトヒョウグ");
    Set(customers_, "Prefecture", "石川県");
    Set(customers_, "Address", "七尾市表町1-2");
    Set(customers_, "CreditLimit", "1500000");
    Set(customers_, "Since", "2026/11/21");
  }

  void AbortedTransaction() {
    Title("a transaction that is aborted: insert, update, delete, all undone");
    const int32_t before = Customers();
    Must(api_.DbBeginTransaction(0), "begin");
    FillNewCustomer();
    Must(api_.DbAccess(kInsert, customers_, kByCustomer), "insert");
    const std::string number = Get(customers_, "CustomerNo");
    std::printf("  inserted as number %s; records: %d\n", number.c_str(), Customers());
    Set(customers_, "CreditLimit", "2000000");
    Must(api_.DbAccess(kUpdate, customers_, kByCustomer), "update");
    std::printf("  credit limit now %s\n", Get(customers_, "CreditLimit").c_str());
    Must(api_.DbAccess(kGetFirst, customers_, kByCustomer), "get first");
    Must(api_.DbAccess(kDelete, customers_, kByCustomer), "delete");
    std::printf("  the first customer deleted; records: %d\n", Customers());
    Must(api_.DbAbortTransaction(), "abort");
    std::printf("  aborted; records: %d, as before\n", Customers());
    MustBe(Customers() == before, "the number of records after the abort");
  }

  void EndedTransaction() {
    Title("a transaction that ends: the new customer stays");
    const int32_t before = Customers();
    Must(api_.DbBeginConCurTransaction(0), "begin");
    FillNewCustomer();
    Must(api_.DbAccess(kInsert, customers_, kByCustomer), "insert");
    Set(customers_, "Rank", "3");
    Must(api_.DbAccess(kUpdate, customers_, kByCustomer), "update");
    Must(api_.DbEndTransaction(), "end");
    PrintCustomer();
    MustBe(Customers() == before + 1, "the number of records after the end");
    Say("  and deleted again");
    Must(api_.DbAccess(kDelete, customers_, kByCustomer), "delete");
    MustBe(Customers() == before, "the number of records after the delete");
  }

  void JumpByPercentage() {
    Title("to the middle of the orders (Get By Percentage, Find Percentage)");
    for (const int16_t percentage : {0, 2500, 5000, 10000}) {
      Must(api_.DbGetByPercentage(orders_, 0, percentage), "get by percentage");
      const int32_t position = api_.DbGetPosition(orders_);
      uint16_t found = 0;
      Must(api_.DbFindPercentage(orders_, 0, position, &found), "find percentage");
      std::printf("  %6.2f %%: order %s of %s, found again at %.2f %%\n", percentage / 100.0,
                  Get(orders_, "OrderNo").c_str(), Get(orders_, "OrderDate").c_str(),
                  found / 100.0);
      MustBe(found + 2 >= percentage && found <= percentage + 2, "the percentage found");
    }
  }

  // Where the current order stands along its key, from 0. An extended read leaves the record buffer
  // alone, so the order is read into it first. Percentages are exact up to 10,000 records.
  int32_t OrdinalOfCurrentOrder(int32_t orders) {
    const int32_t position = api_.DbGetPosition(orders_);
    uint16_t percentage = 0;
    Must(api_.DbGetDirect(orders_, position, kByOrder), "get direct");
    Must(api_.DbFindPercentage(orders_, kByOrder, position, &percentage), "find percentage");
    return (percentage * (orders - 1) + kWholeFile / 2) / kWholeFile;
  }

  void PrintOrders(int16_t result, int16_t count) {
    for (int16_t record = 0; record < count && shownOrders_ < kShownOrders; ++record) {
      ++shownOrders_;
      std::string line = "     ";
      for (const char* field : {"OrderNo", "OrderDate", "Total"}) {
        line +=
            "  " + TakeByteText(api_.DbExGetFieldData(result, FieldNamed(orders_, field), record));
      }
      Say(line);
    }
  }

  // Each call begins with the current record, and every call ends on one that it has examined, so
  // the next one is made current first. `status` becomes 9 where there is none.
  bool GoOnAfter(int32_t& status) {
    if (status != 0 && status != kRejectCount) return false;
    status = api_.DbAccess(kGetNext, orders_, kByOrder);
    return status == 0;
  }

  void FilteredRead() {
    const char* condition = "@Total >= 500000 & @Status = 1";
    Title(std::string("orders of half a million and more, still open: ") + condition);
    Say("  (Get Next Extended along ByOrder: at most 20 records and 1000 rejections a call)");
    int32_t orders = 0, calls = 0, examined = 0, returned = 0;
    Must(api_.DbGetNumOfRecords(orders_, &orders), "count orders");
    Must(api_.DbAccess(kGetFirst, orders_, kByOrder), "get first");
    int32_t status = 0;
    do {
      const int32_t first = OrdinalOfCurrentOrder(orders);
      int16_t result = -1, count = 0;
      status = api_.DbExAccess(kGetNextExtended, orders_, condition, "OrderNo,OrderDate,Total",
                               kByOrder, 1000, 20, 0, &result, &count);
      const int32_t last = OrdinalOfCurrentOrder(orders);
      std::printf("  call %d: records %d to %d examined, %d returned; %s\n", ++calls, first + 1,
                  last + 1, count, InWords(status).c_str());
      examined += last - first + 1;
      returned += count;
      PrintOrders(result, count);
      Must(api_.DbExFree(result), "free the result");
    } while (GoOnAfter(status));
    std::printf("  in all: %d calls, %d records examined, %d returned\n", calls, examined,
                returned);
    MustBe(status == 9, "the filtered read reached the end");
    MustBe(orders > kWholeFile || examined == orders, "each record is examined once");
    MustBe(returned == CountedOneByOne(), "the number of records returned");
    Say("  one Get Next for each record finds as many");
  }

  // The same answer without the record manager's help.
  int32_t CountedOneByOne() {
    int32_t found = 0;
    const int16_t total = FieldNamed(orders_, "Total"), status = FieldNamed(orders_, "Status");
    for (int32_t code = api_.DbAccess(kGetFirst, orders_, kByOrder); code == 0;
         code = api_.DbAccess(kGetNext, orders_, kByOrder)) {
      const bool isLarge = std::stoi(TakeWideText(api_.DbGetFieldData(orders_, total))) >= 500000;
      if (isLarge && TakeWideText(api_.DbGetFieldData(orders_, status)) == "1") ++found;
    }
    return found;
  }

  void ShowFailures() {
    Title("what failures look like");
    Must(api_.DbClearFieldBuffer(customers_), "clear the buffer");
    Set(customers_, "CustomerNo", "99999");
    const int32_t missing = api_.DbAccess(kGetEqual, customers_, kByCustomer);
    Say("  Get Equal of customer 99999: " + InWords(missing));
    MustBe(missing == 4, "status of a missing key");
    Must(api_.DbAccess(kGetFirst, customers_, kByCustomer), "get first");
    const int32_t duplicate = api_.DbAccess(kInsert, customers_, kByCustomer);
    Say("  inserting the first customer again: " + InWords(duplicate));
    MustBe(duplicate == 5, "status of a duplicate key");
    const int32_t closed = api_.DbAccess(kGetFirst, TableNamed("Stock"), 0);
    Say("  reading a table that is not open: " + InWords(closed));
    MustBe(closed == -3, "code of a closed table");
    const int32_t nowhere = api_.DbInitialize("");
    std::printf("  DbInitialize(\"\") gives %d, which is %d without its sign: %s\n", nowhere,
                SignedStatus(nowhere), InWords(SignedStatus(nowhere)).c_str());
    MustBe(nowhere == 65515 && SignedStatus(nowhere) == -21, "code of an empty directory");
  }

  FlatApi api_;
  std::string directory_;
  int16_t customers_ = -1;
  int16_t orders_ = -1;
  int32_t shownOrders_ = 0;
};

}  // namespace
}  // namespace tour

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: flattour DIRECTORY\n");
    return 2;
  }
  SetConsoleOutputCP(CP_UTF8);
  return tour::Tour(argv[1]).Run();
}
