#include "controls/list/QRNExComboBox.h"

#include "binding/tables/QRNExListTables.h"
#include "controls/list/ExtendedRows.h"

namespace qrn {
namespace {

using C = CQRNExComboBox;

// clang-format off
constexpr ole::PropertyEntry kAccess[] = {
    {24, ole::FieldAndPut<&C::Style, &C::PutStyle>},
    {32, ole::Pair<&C::GetSelStart, &C::PutSelStart>},
    {33, ole::Pair<&C::GetSelLength, &C::PutSelLength>},
    {34, ole::Pair<&C::GetSelText, &C::PutSelText>},
    {35, ole::Field<&C::IMEMode>},
};
// clang-format on
constexpr auto kProperties =
    ole::BindProperties<kQRNExComboBoxTable>(kAccess, kExtendedAccess<C>, ole::kStockAccess);
constexpr auto kMethods = ole::BindMethods<kQRNExComboBoxTable>(kExtendedMethods<C>);
constexpr ole::Binding kBinding{kProperties, kMethods};

}  // namespace

CQRNExComboBox::CQRNExComboBox()
    : ExtendedFilled(kQRNExComboBoxTable, kBinding, FillKind::ComboBox) {}

}  // namespace qrn
