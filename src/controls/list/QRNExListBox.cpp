#include "controls/list/QRNExListBox.h"

#include "binding/tables/QRNExListTables.h"
#include "controls/list/ExtendedRows.h"

namespace qrn {
namespace {

using C = CQRNExListBox;

constexpr int32_t kIntegralHeight = 23;

constexpr ole::PropertyEntry kAccess[] = {{32, ole::Field<&C::DbTabStops>}};
constexpr auto kProperties =
    ole::BindProperties<kQRNExListBoxTable>(kAccess, kExtendedAccess<C>, ole::kStockAccess);
constexpr auto kMethods = ole::BindMethods<kQRNExListBoxTable>(kExtendedMethods<C>);
constexpr ole::Binding kBinding{kProperties, kMethods};

}  // namespace

CQRNExListBox::CQRNExListBox() : ExtendedFilled(kQRNExListBoxTable, kBinding, FillKind::ListBox) {}

void CQRNExListBox::OnChanged(int32_t id) {
  ListBoxControl::OnChanged(id);
  if (id == kIntegralHeight && !UserMode()) RemakeContained();
}

}  // namespace qrn
