#include "Office.h"

#include "core/Dictionary.h"
#include "core/DictionaryLookup.h"
#include "core/Table.h"
#include "platform/BtrCall.h"
#include "tests/support/SmallTables.h"
#include "tools/qrndata/Builder.h"
#include "tools/qrndata/Schema.h"

namespace qrn::test {
namespace {

constexpr char kPeopleTable[] = R"(
[[table]]
name = "People"
file = "people.btr"
field = [
  { name = "Code", type = "Integer", size = 4 },
  { name = "Name", type = "String", size = 20 },
  { name = "Town", type = "String", size = 12 },
  { name = "Pay", type = "Decimal", size = 5, decimals = 2 },
]
key = [
  { name = "ByCode", fields = ["Code"] },
  { name = "ByPlace", fields = ["Town", "Code"], modifiable = true },
  { name = "ByName", fields = ["Name"], duplicates = true, modifiable = true },
]
)";
constexpr char kPapersTable[] = R"(
[[table]]
name = "Papers"
field = [
  { name = "No", type = "Integer", size = 4 },
  { name = "Head", type = "Blob" },
  { name = "Body", type = "Blob" },
]
key = [ { name = "ByNo", fields = ["No"] } ]
)";
constexpr char kHeapTable[] = R"(
[[table]]
name = "Heap"
field = [ { name = "Word", type = "String", size = 6 } ]
)";

std::string calls;

int16_t BTR_CALL LogCall(uint16_t operation, void* posBlock, void* data, uint32_t* dataLength,
                         void* key, uint8_t keyLength, int8_t keyNumber) {
  calls += std::to_string(operation) + "/" + std::to_string(static_cast<uint8_t>(keyNumber)) + ":" +
           (dataLength != nullptr ? std::to_string(*dataLength) : "-") + " ";
  ReplaceBtrCall(nullptr);
  const int16_t status = BtrCall(operation, posBlock, data, dataLength, key, keyLength, keyNumber);
  ReplaceBtrCall(&LogCall);
  return status;
}

}  // namespace

Office::Office() {
  const std::string schema =
      std::string(kPeopleTable) + kNotesTable + kPapersTable + kDaysTable + kHeapTable;
  qrndata::BuildDatabase(qrndata::ParseSchema(schema, "test", directory_.Root()), directory_.Root(),
                         qrndata::Existing::Replace);
  if (DbDictLoad(settings, Directory(), &dictionary_) != 0) std::abort();
  if (DbOpenAllTables(engine, *dictionary_, Directory(), "", 0) != 0) std::abort();
}

Office::~Office() {
  DbDictCloseAll(engine, *dictionary_);
  DbDictFree(dictionary_);
}

DbTableInfo* Office::Table(const char* name) { return DbFindTable(*dictionary_, name); }

DbTableInfo* Office::OpenTableOf(const char* name) {
  DbTableInfo* table = Table(name);
  return table->IsOpen != 0 ? table : nullptr;
}

void Office::Close(const char* name) {
  if (DbTableClose(engine, *Table(name)) != 0) std::abort();
}

std::string Office::PathOf(const char* name) const { return directory_.Path(name); }

std::string Office::Field(const char* table, const char* field) {
  return CodePageToUtf8(DbReadFieldByName(engine, *Table(table), field));
}

int32_t PlayedForm::ReadControlField(const DbTableInfo&, const DbFieldInfo& field,
                                     std::string& text) {
  const auto control = texts.find(field.Name);
  if (control == texts.end()) return 0;
  text = Utf8ToCodePage(control->second);
  return 1;
}

void PlayedForm::WriteControlField(const DbTableInfo&, const DbFieldInfo& field, const char* text) {
  const std::string name = field.Name;
  const std::string shown = CodePageToUtf8(text);
  written += name + "=" + shown + " ";
  if (const auto control = texts.find(name); control != texts.end()) control->second = shown;
  if (onChange) onChange(name);
}

void PlayedForm::ClearControlField(const DbTableInfo&, const DbFieldInfo& field) {
  if (const auto control = texts.find(field.Name); control != texts.end()) control->second.clear();
}

CallLog::CallLog() {
  calls.clear();
  ReplaceBtrCall(&LogCall);
}

CallLog::~CallLog() { ReplaceBtrCall(nullptr); }

std::string CallLog::Take() { return std::exchange(calls, {}); }

}  // namespace qrn::test
