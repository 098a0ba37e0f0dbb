// The deferred load: tables first, each table's fields and keys at its first open or create. Unlike
// the full load it reports its failures itself.
#include <algorithm>
#include <string_view>

#include "core/Dictionary.h"
#include "core/DictionaryLists.h"
#include "core/DictionaryRows.h"
#include "core/MemoryFailure.h"
#include "core/ReturnCodes.h"
#include "fields/Messages.h"
#include "platform/CodePage.h"

namespace qrn {
namespace {

// No lexbase code: what a row handler gives without memory.
constexpr int32_t kNoMemory = INT32_MIN;

// What became of a reading: lexbase's code, and the message that a code other than 0 is told with.
struct Outcome {
  int32_t code = 0;
  MessageId message = kVE812;
};

// -1 after the message for a code other than 0. The reading is closed by then: there is only one at
// a time, and what runs while the message is up may want its own.
Status Reported(const Outcome& outcome) {
  if (outcome.code == 0) return kSuccess;
  if (outcome.code == kNoMemory) {
    ReportMemoryFailure();
  } else {
    ShowMessage(outcome.message, static_cast<int>(outcome.code));
  }
  return kFailure;
}

int32_t ReadTableList(DbDictionary& dictionary) {
  return ForEachRow(&ReadFileRow, [&](const FileRow& row) {
    if (row.flags == kRowOfDictionaryItself) return kNextRow;
    return AppendTable(dictionary, row) ? kNextRow : FailedRow(kFailure);
  });
}

// Rows come in the order of their tables' ids, so the first of a later table ends the reading.
int32_t ReadOwnFields(DbTableInfo& table) {
  return ForEachRow(&ReadFieldRow, [&](const FieldRow& row) {
    if (row.NamesDictionaryField() || row.type == kIndexName) return kNextRow;
    if (row.fileId != table.FileId) return row.fileId < table.FileId ? kNextRow : kEnoughRows;
    return AppendField(table, row) != nullptr ? kNextRow : FailedRow(kNoMemory);
  });
}

int32_t ReadOwnSegments(DbTableInfo& table) {
  return ForEachRow(&ReadIndexRow, [&](const IndexRow& row) {
    if (row.fileId < kFirstUserFileId) return kNextRow;
    if (row.fileId != table.FileId) return row.fileId < table.FileId ? kNextRow : kEnoughRows;
    return AppendSegment(table, row) ? kNextRow : FailedRow(kNoMemory);
  });
}

Outcome ReadTable(const QuorinSettings& settings, DbTableInfo& table) {
  DictionaryReading reading;
  if (const int32_t code = reading.Open(settings.DeferredDirectory)) return {code, kVE028};
  if (const int32_t code = ReadOwnFields(table)) return {code, kVE030};
  if (const int32_t code = ReadOwnSegments(table)) return {code, kVE031};
  return {reading.Close(), kVE812};
}

Outcome ReadTableList(QuorinSettings& settings, const char* directory, DbDictionary** dictionary) {
  DictionaryReading reading;
  if (const int32_t code = reading.Open(directory)) return {code, kVE028};
  *dictionary = NewDictionary(directory);
  if (*dictionary == nullptr) return {kNoMemory};
  CopyText(settings.DeferredDirectory, directory);
  if (const int32_t code = ReadTableList(**dictionary)) return {code, kVE029};
  return {reading.Close(), kVE812};
}

// The lists of one table while they are built: nobody meets them half done.
struct ListsUnderWay : DbTableInfo {
  explicit ListsUnderWay(const DbTableInfo& table) : DbTableInfo{} { FileId = table.FileId; }
  ~ListsUnderWay() { FreeLists(*this); }
  ListsUnderWay(const ListsUnderWay&) = delete;
  ListsUnderWay& operator=(const ListsUnderWay&) = delete;
};

int32_t SumOfSizes(const DbTableInfo& table) {
  int32_t sum = 0;
  for (int32_t i = 0; i < table.FieldCount; ++i) sum += table.Fields[i].Size;
  return sum;
}

}  // namespace

Status DbDictLoadTableList(QuorinSettings& settings, const char* directory,
                           DbDictionary** dictionary) noexcept {
  return Reported(ReadTableList(settings, directory, dictionary));
}

Status DbDictLoadTable(QuorinSettings& settings, DbTableInfo& table) noexcept {
  ListsUnderWay loaded(table);
  const Outcome outcome = ReadTable(settings, loaded);
  if (outcome.code == 0) {
    SwapLists(loaded, table);
    table.RecordLength = SumOfSizes(table);
  }
  return Reported(outcome);
}

}  // namespace qrn
