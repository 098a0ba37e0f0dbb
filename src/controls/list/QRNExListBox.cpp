#include "controls/list/QRNExListBox.h"

#include "binding/tables/QRNExListTables.h"
#include "controls/list/ExtendedRows.h"
#include "ole/Names.h"

namespace qrn {
namespace {

constexpr ole::PropertyEntry kExListBoxAccess[] = {{32, ole::Field<&CQRNExListBox::DbTabStops>}};
constexpr auto kExListBoxProperties = ole::BindProperties<kQRNExListBoxTable>(
    kExListBoxAccess, kExtendedAccess<CQRNExListBox>, ole::kStockAccess);
constexpr auto kExListBoxMethods =
    ole::BindMethods<kQRNExListBoxTable>(kExtendedMethods<CQRNExListBox>);
constexpr ole::Binding kExListBoxBinding{kExListBoxProperties, kExListBoxMethods};

}  // namespace

CQRNExListBox::CQRNExListBox()
    : ExtendedFilled(kQRNExListBoxTable, kExListBoxBinding, FillKind::ListBox) {}

std::span<const int32_t> CQRNExListBox::RemadeInDesigner() const {
  static constexpr int32_t kIds[] = {ole::stock::kAppearance, ole::stock::kBorderStyle,
                                     ole::IdOf<kQRNExListBoxTable, "IntegralHeight">};
  return kIds;
}

}  // namespace qrn
