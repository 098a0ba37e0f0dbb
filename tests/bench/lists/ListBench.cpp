// Lists of several fields filled with the company's 100,000 customers, who all meet a condition,
// beside the same window that is handed the ready texts and the bare extended reads of the same
// records. Prints the ratio of the medians of interleaved runs for each kind of window; ends with 1
// when one is above the limit.
#include <filesystem>
#include <iostream>
#include <sstream>

#include "binding/QRNBtr.h"
#include "binding/registry/ControlRegistry.h"
#include "controls/list/QRNExComboBox.h"
#include "controls/list/QRNExListBox.h"
#include "core/DictionaryLookup.h"
#include "core/Gateway.h"
#include "core/KeyBuffer.h"
#include "examples/company/generator/Generate.h"
#include "extended/ExExchange.h"
#include "extended/ExOperation.h"
#include "extended/FieldList.h"
#include "extended/FirstRecord.h"
#include "extended/SearchCond.h"
#include "tests/bench/Measure.h"
#include "tests/controls/Hosted.h"
#include "tests/support/TempFolder.h"

namespace qrn::test {
namespace {

using bench::Check;
using bench::Median;
using bench::Seconds;

constexpr int32_t kRecords = 100'000;
constexpr uint16_t kBatch = 1000;
constexpr int kRuns = 5;
constexpr double kLimit = 1.3;
constexpr char kCondition[] = "@CustomerNo > 0";
constexpr char kFields[] = "CustomerNo,Name,Prefecture";

class Workplace {
 public:
  Workplace() {
    const std::filesystem::path& path = folder_.Root();
    std::ostringstream told;
    const int code = company::Run({QRN_COMPANY_SCHEMA, path.string(), "--orders", "1",
                                   "--customers", std::to_string(kRecords)},
                                  {told, std::cerr, nullptr});
    Check(code == 0, "no company");
  }
  std::wstring Path() const { return folder_.Root().wstring(); }

 private:
  TempFolder folder_;
};

template <class C>
class Bench {
 public:
  explicit Bench(const Workplace& place) {
    database_.Set(L"DDFDir", Text(place.Path().c_str()));
    Check(database_.Show() == S_OK, "no database");
    list_.events.hears = false;
    list_.Set(L"DbListSource", Text(L"Db"));
    list_.Set(L"DbListTable", Text(L"Customers"));
    list_.Set(L"DbListFields", Text(L"CustomerNo,Name,Prefecture"));
    list_.Set(L"DbListIndex", Text(L"ByCustomer"));
    list_.Set(L"DbConditions", Text(L"@CustomerNo > 0"));
    list_.Set(L"DbMaxRecords", Long(kBatch));
    list_.Set(L"DbUpdateOption", Long(0));
    Check(list_.Show() == S_OK, "no list");
    Fill();
    for (int32_t i = 0; i < kRecords; ++i) texts_.push_back(list_->Items().Text(i));
  }

  void Fill() {
    CallMethod(list_.object(), L"Refresh");
    Check(list_->GetListCount() == kRecords, "the list is not full");
  }

  void HandTexts() {
    const ListItems items(list_.window(), list_->kind().messages);
    items.Reset();
    SendMessageW(list_.window(), WM_SETREDRAW, FALSE, 0);
    items.Reserve(kRecords, kRecords * 100);
    for (const std::wstring& text : texts_) items.Add(text.c_str());
    SendMessageW(list_.window(), WM_SETREDRAW, TRUE, 0);
    Check(items.Count() == kRecords, "the texts do not fit");
  }

  void ReadBare() {
    DbTableInfo& table = *TheRegistry().ResolveTable(TheForm(), "Db", "Customers");
    const ExOperation& operation = *FindExOperation(OpGetNextEx);
    KeyBuffer buffer;
    Check(DbBuildKey(table, 0, buffer), "no key");
    const ExKey key{buffer.Bytes(), buffer.Length(), 0};
    const auto condition = ParseSearchCond(TheEngine(), table, kCondition, false);
    const auto fields = ParseFieldList(TheEngine(), table, kFields);
    auto exchange = ExExchange::Make(ExRequest(kBeginWithCurrent, 0, *condition, kBatch, *fields));
    Check(exchange && GoToFirstRecord(operation, table, key) == 0, "no first record");
    Status status = 0;
    int32_t count = 0;
    for (; status == 0; exchange->SetSignature(kBeginAfterCurrent)) {
      status = exchange->Call(operation.extended, table, key);
      const auto reply = exchange->Reply();
      if (reply.size() >= 2) count += reply[0] | reply[1] << 8;
    }
    Check(status == 9 && count == kRecords, "the bare reads went wrong");
  }

 private:
  Hosted<CQRNBtr> database_{L"Db"};
  Hosted<C> list_{L"lst"};
  std::vector<std::wstring> texts_;
};

// True when the figure is kept.
template <class C>
bool Run(const Workplace& place, const char* window) {
  Bench<C> bench(place);
  std::vector<double> ours;
  std::vector<double> texts;
  std::vector<double> reads;
  for (int run = 0; run < kRuns; ++run) {
    ours.push_back(Seconds([&] { bench.Fill(); }));
    texts.push_back(Seconds([&] { bench.HandTexts(); }));
    reads.push_back(Seconds([&] { bench.ReadBare(); }));
  }
  const double yardstick = Median(texts) + Median(reads);
  const std::string what = std::to_string(kRecords) + " customers of three fields into a " +
                           window + ", over ready texts and bare reads";
  const bool good = bench::Tell(what.c_str(), Median(ours) / yardstick, kLimit);
  std::printf("     of the yardstick the window takes %.0f %%\n", 100 * Median(texts) / yardstick);
  return good;
}

int RunAll() {
  const Workplace place;
  const bool list = Run<CQRNExListBox>(place, "list");
  const bool combo = Run<CQRNExComboBox>(place, "combo");
  return list && combo ? 0 : 1;
}

}  // namespace
}  // namespace qrn::test

int main() {
  if (FAILED(OleInitialize(nullptr))) return 2;
  const int code = qrn::test::RunAll();
  OleUninitialize();
  return code;
}
