/* A program of a user's: it walks a small company's data through the flat interface and tells what
 * it does. The argument is the folder of the dictionary and its data files.
 *
 * Tables are numbered in the dictionary's order, keys by the place of their first segment. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <windows.h>

#include "flatapi.h"

/* Places of the keys of Customers: its first is one segment, its second one, its third two. */
enum { kByCustomer = 0, kByKana = 1 };
/* And the first of Orders. */
enum { kByOrder = 0 };

enum { kWholeFile = 10000 /* as a percentage */, kShownOrders = 6, kLargeOrder = 500000 };

static struct FlatApi api;
static int16_t customers, orders;

static const char* InWords(int status) {
  static const struct {
    int status;
    const char* words;
  } kWords[] = {
      {BtrStatusOk, "done"},
      {BtrStatusRejectCount, "the reject count was reached"},
      {BtrStatusKeyNotFound, "no record has that key value (該当レコードがみつかりません)"},
      {BtrStatusDuplicateKey, "the key value is there already (キーの値が重複しています)"},
      {BtrStatusInvalidPositioning, "there is no current record (現在レコードがありません)"},
      {BtrStatusEndOfFile, "the end of the file (ファイルの先頭または最後です)"},
      {QrnCodeAlreadyOpen, "the table is open already"},
      {QrnCodeNotOpen, "the table is not open"},
      {QrnCodeBadTableId, "there is no table of that number"},
      {QrnCodeNoDirectory, "no directory was given"},
  };
  static char number[24];
  size_t i;
  for (i = 0; i < sizeof kWords / sizeof *kWords; ++i) {
    if (kWords[i].status == status) return kWords[i].words;
  }
  snprintf(number, sizeof number, "status %d", status);
  return number;
}

static void Title(const char* text) { printf("\n--- %s\n", text); }

/* A step that has to work ends the tour when it does not. */
static void Must(int status, const char* step) {
  if (status == 0) return;
  printf("%s: %s\n", step, InWords(status));
  exit(1);
}

static void MustBe(int condition, const char* what) {
  if (condition) return;
  printf("not as it should be: %s\n", what);
  exit(1);
}

static void OpenDictionary(const char* directory) {
  BtrVersion version = {0};
  int16_t status;
  Must(api.DbGetVersion(&version), "version");
  printf("record manager %d.%d%c\n", version.version, version.revision, version.engine);
  /* DbInitialize widens its 16-bit status without the sign: -21 comes as 65515. */
  status = (int16_t)api.DbInitialize(ToCodePage(directory));
  printf("DbInitialize(\"%s\"): %s\n", directory, InWords(status));
  if (status != 0) exit(1);
}

static int32_t Records(int16_t table) {
  int32_t count = 0;
  Must(api.DbGetNumOfRecords(table, &count), "count records");
  return count;
}

static void ShowTables(void) {
  int16_t table, field;
  Title("the dictionary: tables and their fields");
  for (table = 0; table < api.DbGetNumOfTable(); ++table) {
    /* A closed table does not tell the names of its fields. */
    Must(api.DbOpen(table), "open");
    printf("%2d %-12s %6d records: ", table, TakeBytes(api.DbGetTableName(table)), Records(table));
    for (field = 0; field < api.DbGetNumOfField(table); ++field) {
      printf("%s%s", field == 0 ? "" : ", ", TakeBytes(api.DbGetFieldName(table, field)));
    }
    printf("\n");
    Must(api.DbClose(table), "close");
  }
}

static int16_t TableNamed(const char* name) {
  int16_t table;
  for (table = 0; table < api.DbGetNumOfTable(); ++table) {
    if (strcmp(TakeBytes(api.DbGetTableName(table)), name) == 0) return table;
  }
  printf("the dictionary has no table %s\n", name);
  exit(1);
}

static int16_t FieldNamed(int16_t table, const char* name) {
  int16_t field;
  for (field = 0; field < api.DbGetNumOfField(table); ++field) {
    if (strcmp(TakeBytes(api.DbGetFieldName(table, field)), name) == 0) return field;
  }
  printf("there is no field %s\n", name);
  exit(1);
}

static const char* Get(int16_t table, const char* field) {
  return TakeUnits(api.DbGetFieldData(table, FieldNamed(table, field)));
}

static void Set(int16_t table, const char* field, const char* text) {
  Must(api.DbSetFieldData(table, FieldNamed(table, field), ToCodePage(text)), field);
}

static void PrintCustomer(void) {
  static const char* const kFields[] = {"CustomerNo", "Name", "Kana", "Prefecture", "Address"};
  static const char* const kForms[] = {"  %6s", "  %s", "  (%s)", "  %s", "%s\n"};
  int i;
  for (i = 0; i < 5; ++i) printf(kForms[i], Get(customers, kFields[i]));
}

static void WalkByKana(void) {
  int32_t status = api.DbAccess(BtrOpGetFirst, customers, kByKana);
  int row;
  Title("the first customers by their reading (Get First, Get Next along ByKana)");
  for (row = 0; row < 6 && status == 0; ++row) {
    PrintCustomer();
    status = api.DbAccess(BtrOpGetNext, customers, kByKana);
  }
  Must(status, "walk by reading");
}

static void FindByNumber(void) {
  Title("customer number 42 (Get Equal on ByCustomer; the record buffer is the key)");
  Must(api.DbClearFieldBuffer(customers), "clear the buffer");
  Set(customers, "CustomerNo", "42");
  Must(api.DbAccess(BtrOpGetEqual, customers, kByCustomer), "find customer 42");
  PrintCustomer();
  MustBe(strcmp(Get(customers, "CustomerNo"), "42") == 0, "the customer found");
}

static void FillNewCustomer(void) {
  Must(api.DbClearFieldBuffer(customers), "clear the buffer");
  Set(customers, "Name", "株式会社 北斗ソフト能登表具");
  Set(customers, "Kana", "ホクトソフトノトヒョウグ");
  Set(customers, "Prefecture", "石川県");
  Set(customers, "Address", "七尾市表町1-2");
  Set(customers, "CreditLimit", "1500000");
  Set(customers, "Since", "2026/11/21");
}

static void AbortedTransaction(void) {
  const int32_t before = Records(customers);
  Title("a transaction that is aborted: insert, update, delete, all undone");
  Must(api.DbBeginTransaction(0), "begin");
  FillNewCustomer();
  Must(api.DbAccess(BtrOpInsert, customers, kByCustomer), "insert");
  printf("  inserted as number %s; records: %d\n", Get(customers, "CustomerNo"),
         Records(customers));
  Set(customers, "CreditLimit", "2000000");
  Must(api.DbAccess(BtrOpUpdate, customers, kByCustomer), "update");
  printf("  credit limit now %s\n", Get(customers, "CreditLimit"));
  Must(api.DbAccess(BtrOpGetFirst, customers, kByCustomer), "get first");
  Must(api.DbAccess(BtrOpDelete, customers, kByCustomer), "delete");
  printf("  the first customer deleted; records: %d\n", Records(customers));
  Must(api.DbAbortTransaction(), "abort");
  printf("  aborted; records: %d, as before\n", Records(customers));
  MustBe(Records(customers) == before, "the number of records after the abort");
}

static void EndedTransaction(void) {
  const int32_t before = Records(customers);
  Title("a transaction that ends: the new customer stays");
  Must(api.DbBeginConCurTransaction(0), "begin");
  FillNewCustomer();
  Must(api.DbAccess(BtrOpInsert, customers, kByCustomer), "insert");
  Set(customers, "Rank", "3");
  Must(api.DbAccess(BtrOpUpdate, customers, kByCustomer), "update");
  Must(api.DbEndTransaction(), "end");
  PrintCustomer();
  MustBe(Records(customers) == before + 1, "the number of records after the end");
  printf("  and deleted again\n");
  Must(api.DbAccess(BtrOpDelete, customers, kByCustomer), "delete");
  MustBe(Records(customers) == before, "the number of records after the delete");
}

static void JumpByPercentage(void) {
  static const int16_t kPercentages[] = {0, 2500, 5000, 10000};
  size_t i;
  Title("to the middle of the orders (Get By Percentage, Find Percentage)");
  for (i = 0; i < sizeof kPercentages / sizeof *kPercentages; ++i) {
    const int16_t percentage = kPercentages[i];
    uint16_t found = 0;
    Must(api.DbGetByPercentage(orders, kByOrder, percentage), "get by percentage");
    Must(api.DbFindPercentage(orders, kByOrder, api.DbGetPosition(orders), &found),
         "find percentage");
    printf("  %6.2f %%: order %s of %s, found again at %.2f %%\n", percentage / 100.0,
           Get(orders, "OrderNo"), Get(orders, "OrderDate"), found / 100.0);
    MustBe(found + 2 >= percentage && found <= percentage + 2, "the percentage found");
  }
}

/* Where the current order stands along its key, from 0. An extended read leaves the record buffer
 * alone, so the order is read into it first. Percentages are exact up to 10,000 records. */
static int32_t OrdinalOfCurrentOrder(int32_t count) {
  const int32_t position = api.DbGetPosition(orders);
  uint16_t percentage = 0;
  Must(api.DbGetDirect(orders, position, kByOrder), "get direct");
  Must(api.DbFindPercentage(orders, kByOrder, position, &percentage), "find percentage");
  return (percentage * (count - 1) + kWholeFile / 2) / kWholeFile;
}

static void PrintOrders(int16_t result, int16_t count) {
  static const char* const kFields[] = {"OrderNo", "OrderDate", "Total"};
  static int32_t shown = 0;
  int16_t record;
  int i;
  for (record = 0; record < count && shown < kShownOrders; ++record, ++shown) {
    printf("     ");
    for (i = 0; i < 3; ++i) {
      const int16_t field = FieldNamed(orders, kFields[i]);
      printf("  %s", TakeBytes(api.DbExGetFieldData(result, field, record)));
    }
    printf("\n");
  }
}

/* Each call begins with the current record, and every call ends on one that it has examined, so the
 * next one is made current first. The status becomes 9 where there is none. */
static int GoOnAfter(int32_t* status) {
  if (*status != 0 && *status != BtrStatusRejectCount) return 0;
  *status = api.DbAccess(BtrOpGetNext, orders, kByOrder);
  return *status == 0;
}

/* The same answer without the record manager's help. */
static int32_t CountedOneByOne(void) {
  const int16_t total = FieldNamed(orders, "Total"), state = FieldNamed(orders, "Status");
  int32_t found = 0, code;
  for (code = api.DbAccess(BtrOpGetFirst, orders, kByOrder); code == 0;
       code = api.DbAccess(BtrOpGetNext, orders, kByOrder)) {
    const int isLarge = atoi(TakeUnits(api.DbGetFieldData(orders, total))) >= kLargeOrder;
    found += isLarge && strcmp(TakeUnits(api.DbGetFieldData(orders, state)), "1") == 0;
  }
  return found;
}

static void FilteredRead(void) {
  static const char kCondition[] = "@Total >= 500000 & @Status = 1";
  const int32_t count = Records(orders);
  int32_t calls = 0, examined = 0, returned = 0, status = 0;
  printf("\n--- orders of half a million and more, still open: %s\n", kCondition);
  printf("  (Get Next Extended along ByOrder: at most 20 records and 1000 rejections a call)\n");
  Must(api.DbAccess(BtrOpGetFirst, orders, kByOrder), "get first");
  do {
    const int32_t first = OrdinalOfCurrentOrder(count);
    int16_t result = -1, records = 0;
    int32_t last;
    status = api.DbExAccess(BtrOpGetNextExtended, orders, kCondition, "OrderNo,OrderDate,Total",
                            kByOrder, 1000, 20, 0, &result, &records);
    last = OrdinalOfCurrentOrder(count);
    printf("  call %d: records %d to %d examined, %d returned; %s\n", ++calls, first + 1, last + 1,
           records, InWords(status));
    examined += last - first + 1;
    returned += records;
    PrintOrders(result, records);
    Must(api.DbExFree(result), "free the result");
  } while (GoOnAfter(&status));
  printf("  in all: %d calls, %d records examined, %d returned\n", calls, examined, returned);
  MustBe(status == BtrStatusEndOfFile, "the filtered read reached the end");
  MustBe(count > kWholeFile || examined == count, "each record is examined once");
  MustBe(returned == CountedOneByOne(), "the number of records returned");
  printf("  one Get Next for each record finds as many\n");
}

static void ShowFailures(void) {
  int32_t status;
  Title("what failures look like");
  Must(api.DbClearFieldBuffer(customers), "clear the buffer");
  Set(customers, "CustomerNo", "99999");
  status = api.DbAccess(BtrOpGetEqual, customers, kByCustomer);
  printf("  Get Equal of customer 99999: %s\n", InWords(status));
  MustBe(status == BtrStatusKeyNotFound, "status of a missing key");
  Must(api.DbAccess(BtrOpGetFirst, customers, kByCustomer), "get first");
  status = api.DbAccess(BtrOpInsert, customers, kByCustomer);
  printf("  inserting the first customer again: %s\n", InWords(status));
  MustBe(status == BtrStatusDuplicateKey, "status of a duplicate key");
  status = api.DbAccess(BtrOpGetFirst, TableNamed("Stock"), 0);
  printf("  reading a table that is not open: %s\n", InWords(status));
  MustBe(status == QrnCodeNotOpen, "code of a closed table");
  status = api.DbInitialize("");
  printf("  DbInitialize(\"\") gives %d, which is %d without its sign: %s\n", status,
         (int16_t)status, InWords((int16_t)status));
  MustBe(status == 65515 && (int16_t)status == QrnCodeNoDirectory, "code of an empty directory");
}

int main(int argc, char** argv) {
  if (argc != 2) {
    fprintf(stderr, "usage: flattour DIRECTORY\n");
    return 2;
  }
  SetConsoleOutputCP(CP_UTF8);
  LoadFlatApi(&api);
  OpenDictionary(argv[1]);
  ShowTables();
  customers = TableNamed("Customers");
  orders = TableNamed("Orders");
  Must(api.DbOpen(customers), "open Customers");
  Must(api.DbOpen(orders), "open Orders");
  WalkByKana();
  FindByNumber();
  AbortedTransaction();
  EndedTransaction();
  JumpByPercentage();
  FilteredRead();
  ShowFailures();
  Must(api.DbClose(orders), "close Orders");
  Must(api.DbClose(customers), "close Customers");
  Must(api.DbTerminate(), "terminate");
  printf("\nThe tour is over: every step gave what it should.\n");
  return 0;
}
