#include "extended/FieldList.h"

#include <new>

#include "core/DictionaryLookup.h"
#include "extended/ExMemoryFailure.h"
#include "extended/FieldReference.h"
#include "extended/TextCursor.h"
#include "extended/WordBytes.h"
#include "fields/Messages.h"

namespace qrn {
namespace {

constexpr size_t kItemLimit = 21;  // bytes of a name or a number

void AddField(FieldList& list, const DbTableInfo& table, int32_t number) {
  const DbFieldInfo& field = table.Fields[number];
  list.Fields.push_back({number, field, DbFindField(table, field.Name) == number});
  AppendWord(list.Extractor, FieldWidth(field));
  AppendWord(list.Extractor, FieldOffset(field));
  list.DataSum += FieldWidth(field);
}

std::optional<FieldList> ParseItems(const DbTableInfo& table, const char* fields) {
  FieldList list;
  TextCursor text(fields);
  text.SkipSpaces();
  do {
    const int32_t number = TakeFieldReference(table, text, kItemLimit);
    if (number == kNoSuchField) return std::nullopt;
    AddField(list, table, number);
  } while (text.Accept(","));
  return list;
}

}  // namespace

std::optional<FieldList> ParseFieldList(const DbEngine&, const DbTableInfo& table,
                                        const char* fields) {
  if (fields == nullptr || *fields == '\0') {
    ShowMessage(kVE040);
    return std::nullopt;
  }
  try {
    return ParseItems(table, fields);
  } catch (const std::bad_alloc&) {
    ReportExMemoryFailure();
    return std::nullopt;
  }
}

}  // namespace qrn
