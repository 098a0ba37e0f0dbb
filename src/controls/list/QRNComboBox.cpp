#include "controls/list/QRNComboBox.h"

#include "binding/tables/QRNListTables.h"

namespace qrn {
namespace {

using C = CQRNComboBox;

// clang-format off
constexpr ole::PropertyEntry kAccess[] = {
    {ole::stock::kText, ole::Pair<&C::GetText, &C::PutText>},
    { 1, ole::FieldAndPut<&C::Style, &C::PutStyle>},
    { 2, ole::Field<&C::IntegralHeight>},
    { 3, ole::Field<&C::Sort>},
    { 4, ole::Getter<&C::GetListCount>},
    { 5, ole::Pair<&C::GetListIndex, &C::PutListIndex>},
    { 6, ole::Pair<&C::GetSelStart, &C::PutSelStart>},
    { 7, ole::Pair<&C::GetSelLength, &C::PutSelLength>},
    { 8, ole::Pair<&C::GetSelText, &C::PutSelText>},
    { 9, ole::Field<&C::DbSource>},
    {10, ole::Field<&C::DbTable>},
    {11, ole::Field<&C::DbField>},
    {12, ole::Field<&C::DbListSource>},
    {13, ole::Field<&C::DbListTable>},
    {14, ole::Field<&C::DbListField>},
    {15, ole::Field<&C::DbListIndex>},
    {16, ole::Field<&C::IMEMode>},
    {17, ole::Field<&C::DbUpdateOption>},
    {18, ole::Pair<&C::GetList, &C::PutList>},
    {23, ole::Field<&C::Abort>},
};
constexpr ole::MethodEntry kMethods[] = {
    {19, ole::Method<&C::Clear>},
    {20, ole::Method<&C::AddItem>},
    {21, ole::Method<&C::Refresh>},
    {22, ole::Method<&C::RemoveItem>},
    {24, ole::Method<&C::Refresh>},
};
// clang-format on
constexpr auto kProperties = ole::BindProperties<kQRNComboBoxTable>(kAccess, ole::kStockAccess);
constexpr auto kBoundMethods = ole::BindMethods<kQRNComboBoxTable>(kMethods);
constexpr ole::Binding kBinding{kProperties, kBoundMethods};

}  // namespace

CQRNComboBox::CQRNComboBox() : PlainFilled(kQRNComboBoxTable, kBinding) {}

}  // namespace qrn
