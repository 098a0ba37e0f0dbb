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

// -1 after the message for a code other than 0.
Status Reported(int32_t code, MessageId message) {
  if (code == 0) return kSuccess;
  ShowMessage(message, static_cast<int>(code));
  return kFailure;
}

Status ReportedMemory() {
  ReportMemoryFailure();
  return kFailure;
}

// No lexbase code: what a row handler gives after it reported a lack of memory.
constexpr int32_t kReported = INT32_MIN;

int32_t ReportedRow() {
  ReportMemoryFailure();
  return kReported;
}

Status ReadTableList(DbDictionary& dictionary) {
  const int32_t code = ForEachRow(&ReadFileRow, [&](const FileRow& row) {
    if (row.flags == kRowOfDictionaryItself) return kNextRow;
    return AppendTable(dictionary, row) ? kNextRow : FailedRow(kFailure);
  });
  return Reported(code, kVE029);
}

// Rows come in the order of their tables' ids, so the first of a later table ends the reading.
int32_t ReadOwnFields(DbTableInfo& table) {
  return ForEachRow(&ReadFieldRow, [&](const FieldRow& row) {
    if (row.NamesDictionaryField() || row.type == kIndexName) return kNextRow;
    if (row.fileId != table.FileId) return row.fileId < table.FileId ? kNextRow : kEnoughRows;
    return AppendField(table, row) != nullptr ? kNextRow : FailedRow(ReportedRow());
  });
}

int32_t ReadOwnSegments(DbTableInfo& table) {
  return ForEachRow(&ReadIndexRow, [&](const IndexRow& row) {
    if (row.fileId < kFirstUserFileId) return kNextRow;
    if (row.fileId != table.FileId) return row.fileId < table.FileId ? kNextRow : kEnoughRows;
    return AppendSegment(table, row) ? kNextRow : FailedRow(ReportedRow());
  });
}

Status ReadTable(const QuorinSettings& settings, DbTableInfo& table) {
  DictionaryReading reading;
  if (Reported(reading.Open(settings.DeferredDirectory), kVE028) != 0) return kFailure;
  const int32_t fields = ReadOwnFields(table);
  if (fields != 0) return fields == kReported ? Status{kFailure} : Reported(fields, kVE030);
  const int32_t segments = ReadOwnSegments(table);
  if (segments != 0) return segments == kReported ? Status{kFailure} : Reported(segments, kVE031);
  return Reported(reading.Close(), kVE812);
}

int32_t SumOfSizes(const DbTableInfo& table) {
  int32_t sum = 0;
  for (int32_t i = 0; i < table.FieldCount; ++i) sum += table.Fields[i].Size;
  return sum;
}

}  // namespace

Status DbDictLoadTableList(QuorinSettings& settings, const char* directory,
                           DbDictionary** dictionary) noexcept {
  DictionaryReading reading;
  if (Reported(reading.Open(directory), kVE028) != 0) return kFailure;
  *dictionary = NewDictionary(directory);
  if (*dictionary == nullptr) return ReportedMemory();
  CopyText(settings.DeferredDirectory, directory);
  if (ReadTableList(**dictionary) != 0) return kFailure;
  return Reported(reading.Close(), kVE812);
}

Status DbDictLoadTable(QuorinSettings& settings, DbTableInfo& table) noexcept {
  FreeLists(table);
  if (ReadTable(settings, table) != 0) {
    FreeLists(table);
    return kFailure;
  }
  table.RecordLength = SumOfSizes(table);
  return kSuccess;
}

}  // namespace qrn
