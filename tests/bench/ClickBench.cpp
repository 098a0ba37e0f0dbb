// A click on Next with ten bound edits beside the bare call of the record manager, and with it the
// cost of controls that stand on other forms.

#include "Ratios.h"
#include "platform/BtrCall.h"
#include "tests/bench/OrdersForm.h"

namespace bench {
namespace {

constexpr int kRecords = 2000;

OrdersForm& TheForm() {
  static OrdersForm form = [] {
    MakeOrders(Workplace(), kRecords);
    return OrdersForm(Workplace());
  }();
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

template <int kOthers>
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
