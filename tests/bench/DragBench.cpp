// A scroll bar's thumb that is let go over 1,000,000 records beside the same over 10,000: the read
// by percentage and the record in ten bound edits. Where each release lands is checked on the way.

#include <deque>
#include <optional>

#include "BoundEdit.h"
#include "Ratios.h"
#include "binding/registry/TableTransfer.h"
#include "core/Dictionary.h"
#include "core/DictionaryLookup.h"
#include "core/Record.h"
#include "core/RecordPosition.h"
#include "core/Table.h"
#include "tests/support/MadeDatabase.h"

namespace bench {
namespace {

constexpr int32_t kFew = 10'000;
constexpr int32_t kMany = 1'000'000;
constexpr int32_t kWhole = 10'000;  // hundredths of a percent
constexpr int kReleases = 500;
constexpr int kEdits = 10;

// Index positions.
constexpr int32_t kByCode = 0;
constexpr int32_t kByTown = 1;  // each value many times

std::string TableText(const char* name) {
  return std::string("[[table]]\nname = \"") + name + R"("
field = [
  { name = "Code", type = "Integer", size = 4 },
  { name = "Name", type = "String", size = 40 },
  { name = "Town", type = "String", size = 12 },
]
key = [
  { name = "ByCode", fields = ["Code"] },
  { name = "ByTown", fields = ["Town"], duplicates = true },
]
)";
}

qrndata::FieldValues Row(int code) {
  const std::string text = std::to_string(code);
  return {text, "name " + text, "town " + std::to_string(code % 997)};
}

qrn::TextWindow form;

// A table of that many records with its edits.
class Bar {
 public:
  Bar(qrn::DbDictionary& dictionary, const char* table, int32_t records)
      : table_(*qrn::DbFindTable(dictionary, table)), records_(records) {
    constexpr const char* kFields[] = {"Code", "Name", "Town"};
    for (int i = 0; i < kEdits; ++i) {
      edits_.emplace_back(table + std::to_string(i), form, table, kFields[i % 3]);
    }
  }

  void Release(int32_t index, int32_t place) {
    Check(qrn::DbGetByPercentageAt(qrn::TheEngine(), table_, index, static_cast<uint16_t>(place)) ==
              0,
          "no record at that place");
    qrn::TransferToControls(edits_[0], [this] { return &table_; });
  }

  // The record shown is the one at that hundredth of a percent, and says so itself.
  void CheckPlace(int32_t place) {
    Release(kByCode, place);
    const double landed = std::atof(edits_[0].Shown()) * kWhole / (records_ - 1);
    Check(landed >= place - 1 && landed <= place + 1, "the thumb lands elsewhere");
    uint16_t told = 0;
    Check(qrn::DbFindPercentageAt(qrn::TheEngine(), table_, kByCode, 0, &told) == 0 &&
              std::abs(told - place) <= 1,
          "the record does not know its place");
  }

 private:
  qrn::DbTableInfo& table_;
  int32_t records_;
  std::deque<BoundEdit> edits_;
};

class Form {
 public:
  Form() {
    const std::string& directory = Workplace();
    qrn::test::MakeDatabase(directory, TableText("Few") + TableText("Many"));
    qrn::test::FillTable(directory, "Few", kFew, Row);
    qrn::test::FillTable(directory, "Many", kMany, Row);
    Check(qrn::DbDictLoad(qrn::TheRegistry(), directory.c_str(), &dictionary_) == 0, "no load");
    Check(qrn::DbOpenAllTables(qrn::TheEngine(), *dictionary_, directory.c_str(), "", 0) == 0,
          "a table does not open");
    few_.emplace(*dictionary_, "Few", kFew);
    many_.emplace(*dictionary_, "Many", kMany);
  }
  Bar& few() { return *few_; }
  Bar& many() { return *many_; }

 private:
  qrn::DbDictionary* dictionary_ = nullptr;
  std::optional<Bar> few_;
  std::optional<Bar> many_;
};

Form& TheForm() {
  static Form made;
  return made;
}

template <int32_t kIndex>
void Drag(Bar& bar) {
  for (int i = 0; i < kReleases; ++i) bar.Release(kIndex, i * 7919 % (kWhole + 1));
}
template <int32_t kIndex>
void DragMany() {
  Drag<kIndex>(TheForm().many());
}
template <int32_t kIndex>
void DragFew() {
  Drag<kIndex>(TheForm().few());
}

void CheckPlaces() {
  for (int32_t place = 0; place <= kWhole; ++place) {
    TheForm().many().CheckPlace(place);
    TheForm().few().CheckPlace(place);
  }
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
  using namespace bench;
  CheckPlaces();
  Figure("a thumb let go over 1,000,000 records, over 10,000 of them", 2, DragMany<kByCode>,
         DragFew<kByCode>, 9);
  Figure("the same along a key with duplicates", 2, DragMany<kByTown>, DragFew<kByTown>, 9);
  return RunRatios(argc, argv);
}
