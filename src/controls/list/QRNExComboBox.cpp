#include "controls/list/QRNExComboBox.h"

#include "binding/tables/QRNExListTables.h"
#include "controls/list/ExtendedRows.h"

namespace qrn {
namespace {

// clang-format off
constexpr ole::PropertyEntry kExComboBoxAccess[] = {
    {24, ole::FieldAndPut<&CQRNExComboBox::Style, &CQRNExComboBox::PutStyle>},
    {32, ole::Pair<&CQRNExComboBox::GetSelStart, &CQRNExComboBox::PutSelStart>},
    {33, ole::Pair<&CQRNExComboBox::GetSelLength, &CQRNExComboBox::PutSelLength>},
    {34, ole::Pair<&CQRNExComboBox::GetSelText, &CQRNExComboBox::PutSelText>},
    {35, ole::Field<&CQRNExComboBox::IMEMode>},
};
// clang-format on
constexpr auto kExComboBoxProperties = ole::BindProperties<kQRNExComboBoxTable>(
    kExComboBoxAccess, kExtendedAccess<CQRNExComboBox>, ole::kStockAccess);
constexpr auto kExComboBoxMethods =
    ole::BindMethods<kQRNExComboBoxTable>(kExtendedMethods<CQRNExComboBox>);
constexpr ole::Binding kExComboBoxBinding{kExComboBoxProperties, kExComboBoxMethods};

}  // namespace

CQRNExComboBox::CQRNExComboBox()
    : ExtendedFilled(kQRNExComboBoxTable, kExComboBoxBinding, FillKind::ComboBox) {}

}  // namespace qrn
