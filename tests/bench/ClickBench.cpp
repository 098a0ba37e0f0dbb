// A click on Next with ten bound edits beside the bare call of the record manager, and with it the
// cost of controls that stand on other forms.

#include <deque>

#include "Ratios.h"
#include "binding/BoundFaces.h"
#include "binding/registry/FormControls.h"
#include "core/ButtonOperations.h"
#include "core/Dictionary.h"
#include "core/DictionaryLookup.h"
#include "core/Gateway.h"
#include "core/Table.h"
#include "platform/BtrCall.h"
#include "tools/qrndata/Builder.h"
#include "tools/qrndata/Dictionary.h"
#include "tools/qrndata/RowImporter.h"
#include "tools/qrndata/Schema.h"

namespace bench {
namespace {

constexpr int kRecords = 2000;
constexpr int kFields = 10;

constexpr char kSchema[] = R"([[table]]
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

void Fill(const qrndata::Dictionary& dictionary) {
  qrndata::RowImporter importer(dictionary.directory, dictionary.tables[0], 10000);
  for (int number = 0; number < kRecords; ++number) {
    const std::string text = std::to_string(number);
    qrndata::FieldValues values = {text, "name " + text, "2024/03/01", text + ".50", text,
                                   "",   text,           "12:34:56",   "1.5",        "text"};
    Check(!importer.Put(values), "a record was refused");
  }
  importer.Finish();
}

qrn::TextWindow clickedForm;
qrn::TextWindow otherForm;

// An edit control whose window costs nothing: what is left is ours.
class Edit final : public qrn::EditFace {
 public:
  Edit(int number, qrn::TextWindow* form) : number_(number), form_(form) {
    Check(qrn::TheRegistry().RegisterFieldControl(*this) == 0, "an edit does not register");
  }
  ~Edit() { qrn::TheRegistry().UnregisterFieldControl(*this); }

  qrn::WindowHandle ContainedWindow() override { return nullptr; }
  void ShowFieldText(const char* text) override { shown_ = text; }
  void ClearFieldText() override { shown_.clear(); }
  void Destroy() override {}
  std::string GetControlName() override {
    return (form_ == &clickedForm ? "edt" : "other") + std::to_string(number_);
  }
  qrn::WindowHandle GetContainerWindow() override { return form_; }
  qrn::ControlType GetControlType() override { return qrn::kTypeEdit; }
  qrn::NullableText GetBoundField() override { return "F" + std::to_string(number_ % kFields); }
  qrn::NullableText GetBoundTable() override { return "Orders"; }

 private:
  int number_;
  qrn::TextWindow* form_;
  std::string shown_;
};

// The table, and ten edits on the form of the button.
class Form final : public qrn::BoundButton {
 public:
  Form() {
    const std::string& directory = Workplace();
    qrndata::BuildDatabase(qrndata::ParseSchema(kSchema, "schema", directory), directory,
                           qrndata::Existing::Replace);
    Fill(qrndata::ReadDictionary(directory));
    Check(qrn::DbDictLoad(qrn::TheRegistry(), directory.c_str(), &dictionary_) == 0, "no load");
    Check(qrn::DbOpenAllTables(qrn::TheEngine(), *dictionary_, directory.c_str(), "", 0) == 0,
          "the table does not open");
    for (int i = 0; i < kFields; ++i) edits_.emplace_back(i, &clickedForm);
  }

  qrn::DbTableInfo* Table() override { return qrn::DbFindTable(*dictionary_, "Orders"); }
  qrn::FieldControls& Controls() override { return controls_; }
  int32_t IndexID() const override { return 0; }
  int32_t DbLocks() const override { return 0; }
  bool RefusedBySetData() override { return false; }

  void WithOthers(size_t count) {
    while (others_.size() > count) others_.pop_back();
    while (others_.size() < count)
      others_.emplace_back(static_cast<int>(others_.size()), &otherForm);
  }

 private:
  qrn::DbDictionary* dictionary_ = nullptr;
  qrn::FormControls controls_{&clickedForm};
  std::deque<Edit> edits_;
  std::deque<Edit> others_;
};

Form& TheForm() {
  static Form form;
  return form;
}

void Click() {
  int count = 0;
  for (int32_t operation = BtrOpGetFirst;; operation = BtrOpGetNext, ++count) {
    if (qrn::DbButtonRead(qrn::TheEngine(), operation, TheForm()) != 0) break;
  }
  Check(count == kRecords, "the clicks went wrong");
}

// Each walk several times, so that the making of the other forms does not show.
constexpr int kWalks = 8;

template <size_t kOthers>
void ClickThrough() {
  TheForm().WithOthers(kOthers);
  for (int i = 0; i < kWalks; ++i) Click();
}

void BareWalk() {
  qrn::DbTableInfo& table = *TheForm().Table();
  char key[256] = {};
  int count = 0;
  for (uint16_t operation = BtrOpGetFirst;; operation = BtrOpGetNext, ++count) {
    auto length = static_cast<uint32_t>(table.RecordLength);
    if (qrn::BtrCall(operation, table.PosBlock, table.RecordBuffer, &length, key, sizeof key - 1,
                     0) != 0) {
      break;
    }
  }
  Check(count == kRecords, "the bare walk went wrong");
}

void Bare() {
  for (int i = 0; i < kWalks; ++i) BareWalk();
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  using namespace bench;
  ClickThrough<0>();  // The file is made before anything is timed.
  Figure("click on Next with ten bound edits, over the bare call", 8, ClickThrough<0>, Bare, 9);
  Figure("the same with 400 controls on other forms, over 200 of them", 2.4, ClickThrough<400>,
         ClickThrough<200>);
  return RunRatios(argc, argv);
}
