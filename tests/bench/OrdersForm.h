// A form with ten edits bound to a table of orders, whose windows cost nothing: what is left is
// ours. The record manager is the library beside the program, as any program has it.
#pragma once

#include <deque>

#include "binding/BoundFaces.h"
#include "binding/registry/FormControls.h"
#include "core/ButtonOperations.h"
#include "core/Dictionary.h"
#include "core/DictionaryLookup.h"
#include "core/Gateway.h"
#include "core/Table.h"
#include "tests/bench/Measure.h"
#include "tools/qrndata/Builder.h"
#include "tools/qrndata/Dictionary.h"
#include "tools/qrndata/RowImporter.h"
#include "tools/qrndata/Schema.h"

namespace bench {

inline constexpr int kOrderFields = 10;
inline constexpr char kOrdersFile[] = "Orders.btr";

inline constexpr char kOrdersSchema[] = R"([[table]]
name = "Orders"
field = [
  { name = "F0", type = "Integer", size = 4 },
  { name = "F1", type = "String", size = 40 },
  { name = "F2", type = "Date" },
  { name = "F3", type = "Decimal", size = 6, decimals = 2 },
  { name = "F4", type = "Numeric", size = 5 },
  { name = "F5", type = "String", size = 50 },
  { name = "F6", type = "Integer", size = 2 },
  { name = "F7", type = "Time" },
  { name = "F8", type = "Float", size = 8 },
  { name = "F9", type = "ZString", size = 20 },
]
key = [ { fields = ["F0"] } ])";

// The dictionary and the file, numbered from 0 on.
inline void MakeOrders(const std::string& directory, int records) {
  qrndata::BuildDatabase(qrndata::ParseSchema(kOrdersSchema, "schema", directory), directory,
                         qrndata::Existing::Replace);
  const qrndata::Dictionary dictionary = qrndata::ReadDictionary(directory);
  qrndata::RowImporter importer(dictionary.directory, dictionary.tables[0], 10000);
  for (int number = 0; number < records; ++number) {
    const std::string text = std::to_string(number);
    qrndata::FieldValues values = {text, "name " + text, "2024/03/01", text + ".50", text,
                                   "",   text,           "12:34:56",   "1.5",        "text"};
    Check(!importer.Put(values), "a record was refused");
  }
  importer.Finish();
}

class OrderEdit final : public qrn::EditFace {
 public:
  OrderEdit(std::string name, int field, qrn::TextWindow& form)
      : name_(std::move(name)), field_(field), form_(form) {
    Check(qrn::TheRegistry().RegisterFieldControl(*this) == 0, "an edit does not register");
  }
  ~OrderEdit() { qrn::TheRegistry().UnregisterFieldControl(*this); }

  qrn::WindowHandle ContainedWindow() override { return nullptr; }
  void ShowFieldText(const char* text) override { shown_ = text; }
  void ClearFieldText() override { shown_.clear(); }
  void Destroy() override {}
  std::string GetControlName() override { return name_; }
  qrn::WindowHandle GetContainerWindow() override { return &form_; }
  qrn::ControlType GetControlType() override { return qrn::kTypeEdit; }
  qrn::NullableText GetBoundField() override { return "F" + std::to_string(field_); }
  qrn::NullableText GetBoundTable() override { return "Orders"; }

 private:
  std::string name_;
  int field_;
  qrn::TextWindow& form_;
  std::string shown_;
};

// The button, the table and ten edits on the button's form.
class OrdersForm final : public qrn::BoundButton {
 public:
  explicit OrdersForm(const std::string& directory) {
    Check(qrn::DbDictLoad(qrn::TheRegistry(), directory.c_str(), &dictionary_) == 0, "no load");
    Check(qrn::DbOpenAllTables(qrn::TheEngine(), *dictionary_, directory.c_str(), "", 0) == 0,
          "the table does not open");
    for (int i = 0; i < kOrderFields; ++i) edits_.emplace_back("edt" + std::to_string(i), i, here_);
  }

  qrn::DbTableInfo* Table() override { return qrn::DbFindTable(*dictionary_, "Orders"); }
  qrn::FieldControls& Controls() override { return controls_; }
  int32_t IndexID() const override { return 0; }
  int32_t DbLocks() const override { return 0; }
  bool RefusedBySetData() override { return false; }

  // So many edits on another form.
  void WithOthers(int count) {
    while (static_cast<int>(others_.size()) > count) others_.pop_back();
    for (int i = static_cast<int>(others_.size()); i < count; ++i) {
      others_.emplace_back("other" + std::to_string(i), i % kOrderFields, elsewhere_);
    }
  }

 private:
  qrn::TextWindow here_;
  qrn::TextWindow elsewhere_;
  qrn::DbDictionary* dictionary_ = nullptr;
  qrn::FormControls controls_{&here_};
  std::deque<OrderEdit> edits_;
  std::deque<OrderEdit> others_;
};

}  // namespace bench
