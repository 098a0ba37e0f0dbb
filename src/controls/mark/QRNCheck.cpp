#include "controls/mark/QRNCheck.h"

#include "binding/tables/QRNCheckTable.h"
#include "controls/mark/MarkAccess.h"

namespace qrn {
namespace {

constexpr ole::PropertyEntry kCheckAccess[] = {{8, ole::Field<&CQRNCheck::DbValueIndeterminate>}};
constexpr auto kCheckProperties =
    ole::BindProperties<kQRNCheckTable>(kCheckAccess, kMarkAccess, ole::kCaptionAccess<CQRNCheck>,
                                        kFieldAccess<CQRNCheck>, ole::kStockAccess);
constexpr ole::Binding kCheckBinding{kCheckProperties, {}};

// Kept so: no state of a record. A box that its user marked gives its field no text.
constexpr int16_t kMarkedByUser = -1;

}  // namespace

CQRNCheck::CQRNCheck() : MarkControl(kQRNCheckTable, kCheckBinding, BS_CHECKBOX) {}

// Kept so: only a mark of the user's own is taken back, so that a mark from a record takes two
// clicks to go.
void CQRNCheck::TakeClick() {
  const bool takenBack = Value == kMarkedByUser;
  Value = takenBack ? int16_t{0} : kMarkedByUser;
  ShowMark(takenBack ? BST_UNCHECKED : BST_CHECKED);
}

}  // namespace qrn
