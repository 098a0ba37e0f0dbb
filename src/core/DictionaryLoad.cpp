// The full load: everything at once.
#include <memory>

#include "core/Dictionary.h"
#include "core/DictionaryLists.h"
#include "core/DictionaryRows.h"
#include "core/ReturnCodes.h"
#include "platform/Memory.h"

namespace qrn {
namespace {

// From a table's id in the dictionary files to the first slot that has it, so that a load takes
// time in proportion to its rows.
class SlotOfFile {
 public:
  // False without memory.
  [[nodiscard]] bool Build(DbDictionary& dictionary) {
    // NOLINTNEXTLINE(bugprone-sizeof-expression): the slots are pointers.
    slots_.reset(static_cast<Slot*>(AllocateZeroed(kIds * sizeof(Slot))));
    if (slots_ == nullptr) return false;
    for (int32_t i = 0; i < dictionary.TableCount; ++i) {
      Slot& slot = slots_.get()[Index(dictionary.Tables[i].FileId)];
      if (slot == nullptr) slot = &dictionary.Tables[i];
    }
    return true;
  }

  // Null for a table that file.ddf does not list.
  DbTableInfo* Find(int32_t fileId) const { return slots_.get()[Index(fileId)]; }

 private:
  using Slot = DbTableInfo*;
  static constexpr size_t kIds = 0x10000;  // ids are 16 bits wide in the files
  static size_t Index(int32_t fileId) { return static_cast<uint16_t>(fileId); }

  std::unique_ptr<Slot, MemoryDeleter> slots_;
};

int32_t ReadTables(DbDictionary& dictionary) {
  return ForEachRow(&ReadFileRow, [&](const FileRow& row) {
    if (row.flags == kRowOfDictionaryItself) return kNextRow;
    return AppendTable(dictionary, row) ? kNextRow : FailedRow(kFailure);
  });
}

bool TakeField(DbTableInfo& table, const FieldRow& row) {
  if (row.type == kIndexName) return AppendNamedIndex(table, row);
  DbFieldInfo* field = AppendField(table, row);
  if (field == nullptr) return false;
  field->Flags = row.flags;
  return true;
}

int32_t ReadFields(const SlotOfFile& slots) {
  return ForEachRow(&ReadFieldRow, [&](const FieldRow& row) {
    if (row.NamesDictionaryField() || row.type == kConstraintName) return kNextRow;
    DbTableInfo* table = slots.Find(row.fileId);
    if (table == nullptr) return kNextRow;
    return TakeField(*table, row) ? kNextRow : FailedRow(kFailure);
  });
}

int32_t ReadSegments(const SlotOfFile& slots) {
  return ForEachRow(&ReadIndexRow, [&](const IndexRow& row) {
    if (row.fileId < kFirstUserFileId) return kNextRow;
    DbTableInfo* table = slots.Find(row.fileId);
    if (table == nullptr) return kNextRow;
    return AppendSegment(*table, row) ? kNextRow : FailedRow(kFailure);
  });
}

int32_t ReadAll(DbDictionary& dictionary) {
  if (const int32_t code = ReadTables(dictionary); code != 0) return code;
  SlotOfFile slots;
  if (!slots.Build(dictionary)) return kFailure;
  if (const int32_t code = ReadFields(slots); code != 0) return code;
  return ReadSegments(slots);
}

// The end of the field that begins last; of two that begin there the first counts.
int32_t EndOfLastField(const DbTableInfo& table) {
  if (table.FieldCount == 0) return 0;
  const DbFieldInfo* last = nullptr;
  for (int32_t i = 0; i < table.FieldCount; ++i) {
    const DbFieldInfo& field = table.Fields[i];
    if (field.Offset > (last != nullptr ? last->Offset : 0)) last = &field;
  }
  return last != nullptr ? last->Offset + last->Size : table.Fields[0].Size;
}

}  // namespace

Status DbDictLoad(QuorinSettings& settings, const char* directory,
                  DbDictionary** dictionary) noexcept {
  if (settings.delayed_resolve != 0) return DbDictLoadTableList(settings, directory, dictionary);
  DictionaryReading reading;
  if (const int32_t code = reading.Open(directory); code != 0) return static_cast<Status>(code);
  *dictionary = NewDictionary(directory);
  if (*dictionary == nullptr) return kFailure;
  if (const int32_t code = ReadAll(**dictionary); code != 0) return static_cast<Status>(code);
  if (const int32_t code = reading.Close(); code != 0) return static_cast<Status>(code);
  for (int32_t i = 0; i < (*dictionary)->TableCount; ++i) {
    DbTableInfo& table = (*dictionary)->Tables[i];
    table.RecordLength = EndOfLastField(table);
  }
  return kSuccess;
}

}  // namespace qrn
