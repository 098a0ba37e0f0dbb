#include "controls/list/QRNComboBox.h"

#include "binding/tables/QRNListTables.h"

namespace qrn {
namespace {

// clang-format off
constexpr ole::PropertyEntry kComboBoxAccess[] = {
    {ole::stock::kText, ole::Pair<&CQRNComboBox::GetText, &CQRNComboBox::PutText>},
    { 1, ole::FieldAndPut<&CQRNComboBox::Style, &CQRNComboBox::PutStyle>},
    { 2, ole::Field<&CQRNComboBox::IntegralHeight>},
    { 3, ole::Field<&CQRNComboBox::Sort>},
    { 4, ole::Getter<&CQRNComboBox::GetListCount>},
    { 5, ole::Pair<&CQRNComboBox::GetListIndex, &CQRNComboBox::PutListIndex>},
    { 6, ole::Pair<&CQRNComboBox::GetSelStart, &CQRNComboBox::PutSelStart>},
    { 7, ole::Pair<&CQRNComboBox::GetSelLength, &CQRNComboBox::PutSelLength>},
    { 8, ole::Pair<&CQRNComboBox::GetSelText, &CQRNComboBox::PutSelText>},
    { 9, ole::Field<&CQRNComboBox::DbSource>},
    {10, ole::Field<&CQRNComboBox::DbTable>},
    {11, ole::Field<&CQRNComboBox::DbField>},
    {12, ole::Field<&CQRNComboBox::DbListSource>},
    {13, ole::Field<&CQRNComboBox::DbListTable>},
    {14, ole::Field<&CQRNComboBox::DbListField>},
    {15, ole::Field<&CQRNComboBox::DbListIndex>},
    {16, ole::Field<&CQRNComboBox::IMEMode>},
    {17, ole::Field<&CQRNComboBox::DbUpdateOption>},
    {18, ole::Pair<&CQRNComboBox::GetList, &CQRNComboBox::PutList>},
    {23, ole::Field<&CQRNComboBox::Abort>},
};
constexpr ole::MethodEntry kComboBoxMethods[] = {
    {19, ole::Method<&CQRNComboBox::Clear>},
    {20, ole::Method<&CQRNComboBox::AddItem>},
    {21, ole::Method<&CQRNComboBox::Refresh>},
    {22, ole::Method<&CQRNComboBox::RemoveItem>},
    {24, ole::Method<&CQRNComboBox::Refresh>},
};
// clang-format on
constexpr auto kComboBoxProperties =
    ole::BindProperties<kQRNComboBoxTable>(kComboBoxAccess, ole::kStockAccess);
constexpr auto kComboBoxBoundMethods = ole::BindMethods<kQRNComboBoxTable>(kComboBoxMethods);
constexpr ole::Binding kComboBoxBinding{kComboBoxProperties, kComboBoxBoundMethods};

}  // namespace

CQRNComboBox::CQRNComboBox() : PlainFilled(kQRNComboBoxTable, kComboBoxBinding) {}

}  // namespace qrn
