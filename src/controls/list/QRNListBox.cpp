#include "controls/list/QRNListBox.h"

#include "binding/tables/QRNListTables.h"

namespace qrn {
namespace {

using C = CQRNListBox;

constexpr int32_t kIntegralHeight = 2;

// clang-format off
constexpr ole::PropertyEntry kAccess[] = {
    {ole::stock::kText, ole::Pair<&C::GetText, &C::PutText>},
    { 1, ole::Field<&C::Sort>},
    { 2, ole::Field<&C::IntegralHeight>},
    { 3, ole::Getter<&C::GetListCount>},
    { 4, ole::Pair<&C::GetListIndex, &C::PutListIndex>},
    { 5, ole::Pair<&C::GetList, &C::PutList>},
    { 6, ole::Pair<&C::GetItemData, &C::PutItemData>},
    {10, ole::Field<&C::Abort>},
    {11, ole::Field<&C::DbSource>},
    {12, ole::Field<&C::DbTable>},
    {13, ole::Field<&C::DbField>},
    {14, ole::Field<&C::DbListSource>},
    {15, ole::Field<&C::DbListTable>},
    {16, ole::Field<&C::DbListField>},
    {17, ole::Field<&C::DbListIndex>},
    {18, ole::Field<&C::DbUpdateOption>},
};
constexpr ole::MethodEntry kMethods[] = {
    { 7, ole::Method<&C::AddItem>},
    { 8, ole::Method<&C::Clear>},
    { 9, ole::Method<&C::RemoveItem>},
    {19, ole::Method<&C::Refresh>},
    {20, ole::Method<&C::Refresh>},
};
// clang-format on
constexpr auto kProperties = ole::BindProperties<kQRNListBoxTable>(kAccess, ole::kStockAccess);
constexpr auto kBoundMethods = ole::BindMethods<kQRNListBoxTable>(kMethods);
constexpr ole::Binding kBinding{kProperties, kBoundMethods};

}  // namespace

CQRNListBox::CQRNListBox() : PlainFilled(kQRNListBoxTable, kBinding) {}

void CQRNListBox::OnChanged(int32_t id) {
  ListBoxControl::OnChanged(id);
  if (id == kIntegralHeight && !UserMode()) RemakeContained();
}

}  // namespace qrn
