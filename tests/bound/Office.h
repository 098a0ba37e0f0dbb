// A small database on disk with a form played over it: what the bound operations are tried on.
#pragma once

#include "core/ButtonOperations.h"
#include "core/DbEngine.h"
#include "core/Dictionary.h"
#include "core/DictionaryLookup.h"
#include "core/FieldControls.h"
#include "core/Gateway.h"
#include "core/Record.h"
#include "core/RowSink.h"
#include "core/Table.h"
#include "fields/QuorinSettings.h"
#include "platform/BtrCall.h"
#include "tests/core/Support.h"
#include "tests/support/MadeDatabase.h"
#include "tests/support/SmallTables.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Test.h"

namespace qrn::test {

inline constexpr char kPeopleTable[] = R"(
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
inline constexpr char kPapersTable[] = R"(
[[table]]
name = "Papers"
field = [
  { name = "No", type = "Integer", size = 4 },
  { name = "Head", type = "Blob" },
  { name = "Body", type = "Blob" },
]
key = [ { name = "ByNo", fields = ["No"] } ]
)";
inline constexpr char kHeapTable[] = R"(
[[table]]
name = "Heap"
field = [ { name = "Word", type = "String", size = 6 } ]
)";

// Tables by name: "People" (fixed records; keys ByCode, ByPlace of two segments, ByName with
// duplicates), "Notes" (ends in a note), "Papers" (two blobs), "Days" (a nullable field), "Heap"
// (no key). All open, all empty.
class Office : Pinned {
 public:
  Office() {
    MakeDatabase(directory_.Root(),
                 std::string(kPeopleTable) + kNotesTable + kPapersTable + kDaysTable + kHeapTable);
    if (DbDictLoad(settings, Directory(), &dictionary_) != 0) std::abort();
    if (DbOpenAllTables(engine, *dictionary_, Directory(), "", 0) != 0) std::abort();
  }
  ~Office() {
    DbDictCloseAll(engine, *dictionary_);
    DbDictFree(dictionary_);
  }

  DbDictionary* Dictionary() { return dictionary_; }
  DbTableInfo* Table(const char* name) { return DbFindTable(*dictionary_, name); }
  // Null for a closed one.
  DbTableInfo* OpenTableOf(const char* name) {
    DbTableInfo* table = Table(name);
    return table->IsOpen != 0 ? table : nullptr;
  }
  void Close(const char* name) {
    if (DbTableClose(engine, *Table(name)) != 0) std::abort();
  }
  const char* Directory() const { return directory_.Text().c_str(); }
  std::string PathOf(const char* name) const { return directory_.Path(name); }
  // A field of the record in the buffer, as UTF-8.
  std::string Field(const char* table, const char* field) {
    return CodePageToUtf8(DbReadFieldByName(engine, *Table(table), field));
  }

  QuorinSettings settings;
  DbEngine engine{settings};

 private:
  TempFolder directory_;
  DbDictionary* dictionary_ = nullptr;
};

// The controls of a form by the name of their field. A field that has no text here has no control.
// Texts are UTF-8.
class PlayedForm final : public FieldControls {
 public:
  std::map<std::string, std::string> texts;
  std::string written;  // "Code=1 Name=x " in the order of writing
  std::function<void(const std::string& field)> onChange;  // a handler of `Change`

  int32_t ReadControlField(const DbTableInfo&, const DbFieldInfo& field,
                           std::string& text) override {
    const auto control = texts.find(field.Name);
    if (control == texts.end()) return 0;
    text = Utf8ToCodePage(control->second);
    return 1;
  }
  void WriteControlField(const DbTableInfo&, const DbFieldInfo& field, const char* text) override {
    const std::string name = field.Name;
    const std::string shown = CodePageToUtf8(text);
    written += name + "=" + shown + " ";
    if (const auto control = texts.find(name); control != texts.end()) control->second = shown;
    if (onChange) onChange(name);
  }
  void ClearControlField(const DbTableInfo&, const DbFieldInfo& field) override {
    if (const auto control = texts.find(field.Name); control != texts.end())
      control->second.clear();
  }
};

class PlayedButton final : public BoundButton {
 public:
  PlayedButton(Office& office, PlayedForm& form, const char* table)
      : office_(office), form_(form), table_(table) {}

  int32_t index = 0;
  int32_t locks = 0;
  std::function<bool()> setData;  // true refuses

  DbTableInfo* Table() override { return office_.OpenTableOf(table_); }
  FieldControls& Controls() override { return form_; }
  int32_t IndexID() const override { return index; }
  bool RefusedBySetData() override { return setData && setData(); }
  int32_t DbLocks() const override { return locks; }

 private:
  Office& office_;
  PlayedForm& form_;
  const char* table_;
};

// A list whose rows are written down as UTF-8, each followed by ";".
class PlayedList final : public RowSink {
 public:
  PlayedList(Office& office, const char* table) : office_(office), table_(table) {}

  std::string rows = "before;";
  std::function<bool(std::u16string&)> onFormat;  // false cancels

  DbTableInfo* Table() override { return office_.OpenTableOf(table_); }
  void Empty(size_t) override { rows.clear(); }
  bool Format(std::u16string& lineData) override { return !onFormat || onFormat(lineData); }
  bool AddRow(const char* text) override {
    rows += CodePageToUtf8(text) + ";";
    return true;
  }

 private:
  Office& office_;
  const char* table_;
};

// Writes down every call of the record manager while it lives: "2/0:47 " is operation, key number
// and the data length sent, "-" for none.
class CallLog : Pinned {
 public:
  CallLog() {
    calls_.clear();
    ReplaceBtrCall(&Call);
  }
  ~CallLog() { ReplaceBtrCall(nullptr); }

  std::string Take() { return std::exchange(calls_, {}); }

 private:
  static int16_t BTR_CALL Call(uint16_t operation, void* posBlock, void* data, uint32_t* dataLength,
                               void* key, uint8_t keyLength, int8_t keyNumber) {
    calls_ += std::to_string(operation) + "/" + std::to_string(static_cast<uint8_t>(keyNumber)) +
              ":" + (dataLength != nullptr ? std::to_string(*dataLength) : "-") + " ";
    ReplaceBtrCall(nullptr);
    const int16_t status =
        BtrCall(operation, posBlock, data, dataLength, key, keyLength, keyNumber);
    ReplaceBtrCall(&Call);
    return status;
  }

  static inline std::string calls_;
};

}  // namespace qrn::test
