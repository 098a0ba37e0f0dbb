// Dictionaries of any rows, loaded whole and deferred, failing anywhere; then their tables opened,
// created, read and written over a record manager that fills whatever room it is told of.
#include <cstring>

#include "btrieve.h"
#include "core/Dictionary.h"
#include "core/DictionaryLookup.h"
#include "core/Record.h"
#include "core/RecordPosition.h"
#include "core/Table.h"
#include "fields/LittleEndian.h"
#include "platform/BtrCall.h"
#include "platform/LexbaseCalls.h"
#include "platform/MessageBox.h"
#include "tests/fuzz/FuzzInput.h"

using namespace qrn;
using namespace qrn::fuzz;

namespace {

// The record manager and the dictionary library answer from it too.
Input input;

std::string Text() { return input.Text(input.Byte() % 80); }

// Rows left in the file being read, and the code it ends with.
int rowsLeft[3];
int32_t endCodes[3];
int readings = 0;

int32_t OpenReading(const char*, int32_t) {
  if (input.Byte() == 0xFE) return 12;
  for (int file = 0; file < 3; ++file) {
    const uint8_t rows = input.Byte();
    rowsLeft[file] = rows == 0xFF ? 300 : rows % 40;
    endCodes[file] = input.Byte() == 0xFD ? 43 : LexbaseEndOfFile;
  }
  ++readings;
  return 0;
}

int32_t CloseReading() {
  --readings;
  return input.Byte() == 0xFC ? 41 : 0;
}

void PutName(uint8_t* at, size_t width) {
  std::memset(at, ' ', width);
  for (size_t i = input.Byte() % (width + 1); i > 0; --i) at[i - 1] = input.Byte();
}

int16_t FileId() { return static_cast<int16_t>(input.Byte() % 8 + 2); }

int32_t ReadFile(void* row) {
  if (rowsLeft[0]-- <= 0) return endCodes[0];
  auto* bytes = static_cast<uint8_t*>(row);
  const std::span all(bytes, LexbaseFileRowSize);
  StoreLittle(all, FileId());
  PutName(bytes + 2, 20);
  PutName(bytes + 22, 64);
  bytes[86] = input.Byte() % 17;
  return 0;
}

int32_t ReadField(void* row) {
  if (rowsLeft[1]-- <= 0) return endCodes[1];
  auto* bytes = static_cast<uint8_t*>(row);
  const std::span all(bytes, LexbaseFieldRowSize);
  StoreLittle(all, input.Pick({1, 2, 3, 4}));
  StoreLittle(all.subspan(2), FileId());
  PutName(bytes + 4, 20);
  bytes[24] = static_cast<uint8_t>(input.Pick({0, 1, 2, 5, 8, 10, 12, 13, 21, 25, 26, 255}));
  StoreLittle(all.subspan(25), input.Pick({0, 1, 4, 8, 10, 20, 300, -1}));
  StoreLittle(all.subspan(27), input.Pick({8, 4, 2, 1, 0, 10, 255, 300, -1}));
  bytes[29] = input.Byte();
  StoreLittle(all.subspan(30), input.Pick({0, 4}));
  return 0;
}

int32_t ReadIndex(void* row) {
  if (rowsLeft[2]-- <= 0) return endCodes[2];
  const std::span all(static_cast<uint8_t*>(row), LexbaseIndexRowSize);
  StoreLittle(all, FileId());
  StoreLittle(all.subspan(2), input.Pick({1, 2, 3, 4}));
  StoreLittle(all.subspan(6), input.Pick({0, 1}));
  StoreLittle(all.subspan(8), input.Pick({0, 16, 8, 24, 32}));
  return 0;
}

constexpr LexbaseFunctions kRows = {OpenReading, CloseReading, ReadFile, ReadField, ReadIndex};

// Fills the room it is told of, so that a length beyond it is found, and gives back any length.
int16_t AnyAnswer(uint16_t operation, void* posBlock, void* data, uint32_t* dataLength, void* key,
                  uint8_t keyLength, int8_t) {
  if (posBlock != nullptr) std::memset(posBlock, operation, kPosBlockSize);
  if (operation == BtrOpOpen || operation == BtrOpCreate) return input.Byte() == 0xFB ? 12 : 0;
  if (data != nullptr && dataLength != nullptr) {
    const std::span bytes(static_cast<uint8_t*>(data), *dataLength);
    std::fill(bytes.begin(), bytes.end(), input.Byte());
    for (uint8_t& byte : bytes.first(std::min<size_t>(bytes.size(), 40))) byte = input.Byte();
    if (operation == BtrOpStat && bytes.size() > 10) bytes[10] = input.Byte() & 1;
  }
  if (key != nullptr) std::memset(key, 0x55, keyLength);
  return input.Byte() > 0xF0 ? 22 : 0;
}

bool Terminated(std::span<const char> text) {
  return std::find(text.begin(), text.end(), '\0') != text.end();
}

void CheckTable(const DbTableInfo& table) {
  Require(Terminated(table.Name) && Terminated(table.Location), "a name without its end");
  for (int32_t i = 0; i < table.FieldCount; ++i) {
    const DbFieldInfo& field = table.Fields[i];
    Require(Terminated(field.Name), "a field's name without its end");
    Require(field.FileId == table.FileId, "a field of another table");
    const int32_t found = DbFindField(table, field.Name);
    Require(found >= 0 && found <= i, "a field that is not found");
  }
  for (int32_t i = -2; i <= table.SegmentCount; ++i) {
    const int32_t key = DbSegmentToKey(table, i);
    const int32_t back = DbKeyToSegment(table, key);
    Require(back >= 0 && back <= std::max(i, 0), "a key that begins behind its segment");
  }
  DbFindIndex(table, Text().c_str());
  DbFindIndexOrFirst(table, "");
}

using Step = void (*)(DbEngine& engine, DbTableInfo& table);

constexpr Step kSteps[] = {
    [](DbEngine& engine, DbTableInfo& table) { (void)DbClearRecord(engine, table); },
    [](DbEngine& engine, DbTableInfo& table) {
      const int32_t position = input.Byte() % 40 - 1;
      Require(Terminated({DbReadField(engine, table, position), sizeof engine.FieldText}),
              "a field's text without its end");
    },
    [](DbEngine& engine, DbTableInfo& table) {
      const int32_t position = input.Byte() % 40 - 1;
      (void)DbWriteField(engine, table, position, Text().c_str());
    },
    [](DbEngine& engine, DbTableInfo& table) {
      const std::string text = Text();
      const char* const texts[] = {text.c_str(), "1", text.c_str()};
      (void)DbWriteFields(engine, table, input.Byte() % 8 - 2, texts);
    },
    [](DbEngine& engine, DbTableInfo& table) {
      const int32_t operation = input.Pick({2, 3, 5, 6, 12, 44});
      (void)DbRecordCall(engine, table, operation, input.Byte() % 24 - 2);
    },
    [](DbEngine& engine, DbTableInfo& table) {
      (void)DbGetDirectAt(engine, table, input.Number(), input.Byte() % 24 - 1);
    },
    [](DbEngine& engine, DbTableInfo& table) {
      (void)DbGetByPercentageAt(engine, table, input.Byte() % 24 - 1, 5000);
    },
    [](DbEngine& engine, DbTableInfo& table) {
      uint16_t percentage = 0;
      (void)DbFindPercentageAt(engine, table, input.Byte() % 24 - 1, input.Number(), &percentage);
    },
    [](DbEngine& engine, DbTableInfo& table) {
      int32_t count = 0;
      (void)DbCountRecords(engine, table, &count);
    },
};

void UseTable(DbEngine& engine, DbTableInfo& table) {
  CheckTable(table);
  (void)DbTableCreate(engine, table, "any.btr");
  (void)DbTableOpen(engine, table, ".", "owner", 0);
  for (int steps = input.Byte() % 32; steps > 0; --steps) {
    kSteps[input.Byte() % std::size(kSteps)](engine, table);
  }
}

void UseDictionary(DbEngine& engine, DbDictionary& dictionary) {
  Require(dictionary.TableCount <= kMaxTables, "more tables than slots");
  for (int32_t i = 0; i < std::min(dictionary.TableCount, 6); ++i) {
    UseTable(engine, dictionary.Tables[i]);
  }
  DbDictionary* copy = nullptr;
  Require(DbDictCopy(dictionary, &copy) == 0, "no copy");
  for (int32_t i = 0; i < std::min(copy->TableCount, 2); ++i) UseTable(engine, copy->Tables[i]);
  for (DbDictionary* each : {copy, &dictionary}) {
    (void)DbDictCloseAll(engine, *each);
    (void)DbDictFree(each);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  ReplaceBeep([](unsigned) {});
  ReplaceShowBox([](const char*, unsigned) { return kBoxOk; });
  ReplaceLexbase(&kRows);
  ReplaceBtrCall(AnyAnswer);
  input = {data, size};
  readings = 0;
  QuorinSettings settings;
  DbEngine engine(settings);
  settings.delayed_resolve = input.Byte() & 1;
  DbDictionary* dictionary = nullptr;
  const Status status = DbDictLoad(settings, ".", &dictionary);
  Require(readings == 0, "a reading left open");
  Require(status != 0 || dictionary != nullptr, "success without a dictionary");
  if (dictionary != nullptr) UseDictionary(engine, *dictionary);
  return 0;
}
