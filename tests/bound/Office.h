// A small database on disk with a form played over it: what the bound operations are tried on.
#pragma once

#include "core/ButtonOperations.h"
#include "core/DbEngine.h"
#include "core/FieldControls.h"
#include "core/Gateway.h"
#include "core/Record.h"
#include "core/RowSink.h"
#include "fields/QuorinSettings.h"
#include "tests/core/Support.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Test.h"

namespace qrn::test {

// Tables by name: "People" (fixed records; keys ByCode, ByPlace of two segments, ByName with
// duplicates), "Notes" (ends in a note), "Papers" (two blobs), "Days" (a nullable field), "Heap"
// (no key). All open, all empty.
class Office : Pinned {
 public:
  Office();
  ~Office();

  DbDictionary* Dictionary() { return dictionary_; }
  DbTableInfo* Table(const char* name);        // open or closed
  DbTableInfo* OpenTableOf(const char* name);  // null for a closed one
  void Close(const char* name);
  const char* Directory() const { return directory_.Text().c_str(); }
  std::string PathOf(const char* name) const;
  // A field of the record in the buffer, as UTF-8.
  std::string Field(const char* table, const char* field);

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
                           std::string& text) override;
  void WriteControlField(const DbTableInfo&, const DbFieldInfo& field, const char* text) override;
  void ClearControlField(const DbTableInfo&, const DbFieldInfo& field) override;
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
  CallLog();
  ~CallLog();

  std::string Take();
};

}  // namespace qrn::test
