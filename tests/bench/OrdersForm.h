// A form with ten edits bound to a table of orders, whose windows cost nothing: what is left is
// ours. The record manager is the library beside the program, as any program has it.
#pragma once

#include <deque>

#include "core/ButtonOperations.h"
#include "core/Dictionary.h"
#include "core/DictionaryLookup.h"
#include "core/Gateway.h"
#include "core/Table.h"
#include "tests/bench/BoundEdit.h"
#include "tests/support/MadeDatabase.h"

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
  qrn::test::MakeDatabase(directory, kOrdersSchema);
  qrn::test::FillTable(directory, "Orders", records, [](int number) -> qrndata::FieldValues {
    const std::string text = std::to_string(number);
    return {text, "name " + text, "2024/03/01", text + ".50", text,
            "",   text,           "12:34:56",   "1.5",        "text"};
  });
}

// The button, the table and ten edits on the button's form.
class OrdersForm final : public qrn::BoundButton {
 public:
  explicit OrdersForm(const std::string& directory) {
    Check(qrn::DbDictLoad(qrn::TheRegistry(), directory.c_str(), &dictionary_) == 0, "no load");
    Check(qrn::DbOpenAllTables(qrn::TheEngine(), *dictionary_, directory.c_str(), "", 0) == 0,
          "the table does not open");
    Grow(edits_, here_, "edt", kOrderFields);
  }

  qrn::DbTableInfo* Table() override { return qrn::DbFindTable(*dictionary_, "Orders"); }
  qrn::FieldControls& Controls() override { return controls_; }
  int32_t IndexID() const override { return 0; }
  int32_t DbLocks() const override { return 0; }
  bool RefusedBySetData() override { return false; }

  // So many edits on another form.
  void WithOthers(size_t count) {
    while (others_.size() > count) others_.pop_back();
    Grow(others_, elsewhere_, "other", count);
  }

 private:
  static void Grow(std::deque<BoundEdit>& edits, qrn::TextWindow& form, const std::string& name,
                   size_t count) {
    while (edits.size() < count) {
      const std::string number = std::to_string(edits.size());
      edits.emplace_back(name + number, form, "Orders",
                         "F" + std::to_string(edits.size() % kOrderFields));
    }
  }

  qrn::TextWindow here_;
  qrn::TextWindow elsewhere_;
  qrn::DbDictionary* dictionary_ = nullptr;
  qrn::FormControls controls_{&here_};
  std::deque<BoundEdit> edits_;
  std::deque<BoundEdit> others_;
};

}  // namespace bench
