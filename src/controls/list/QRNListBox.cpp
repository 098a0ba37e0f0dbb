#include "controls/list/QRNListBox.h"

#include "binding/tables/QRNListTables.h"
#include "ole/Names.h"

namespace qrn {
namespace {

// clang-format off
constexpr ole::PropertyEntry kListBoxAccess[] = {
    {ole::stock::kText, ole::Pair<&CQRNListBox::GetText, &CQRNListBox::PutText>},
    { 1, ole::Field<&CQRNListBox::Sort>},
    { 2, ole::Field<&CQRNListBox::IntegralHeight>},
    { 3, ole::Getter<&CQRNListBox::GetListCount>},
    { 4, ole::Pair<&CQRNListBox::GetListIndex, &CQRNListBox::PutListIndex>},
    { 5, ole::Pair<&CQRNListBox::GetList, &CQRNListBox::PutList>},
    { 6, ole::Pair<&CQRNListBox::GetItemData, &CQRNListBox::PutItemData>},
    {10, ole::Field<&CQRNListBox::Abort>},
    {11, ole::Field<&CQRNListBox::DbSource>},
    {12, ole::Field<&CQRNListBox::DbTable>},
    {13, ole::Field<&CQRNListBox::DbField>},
    {14, ole::Field<&CQRNListBox::DbListSource>},
    {15, ole::Field<&CQRNListBox::DbListTable>},
    {16, ole::Field<&CQRNListBox::DbListField>},
    {17, ole::Field<&CQRNListBox::DbListIndex>},
    {18, ole::Field<&CQRNListBox::DbUpdateOption>},
};
constexpr ole::MethodEntry kListBoxMethods[] = {
    { 7, ole::Method<&CQRNListBox::AddItem>},
    { 8, ole::Method<&CQRNListBox::Clear>},
    { 9, ole::Method<&CQRNListBox::RemoveItem>},
    {19, ole::Method<&CQRNListBox::Refresh>},
    {20, ole::Method<&CQRNListBox::Refresh>},
};
// clang-format on
constexpr auto kListBoxProperties =
    ole::BindProperties<kQRNListBoxTable>(kListBoxAccess, ole::kStockAccess);
constexpr auto kListBoxBoundMethods = ole::BindMethods<kQRNListBoxTable>(kListBoxMethods);
constexpr ole::Binding kListBoxBinding{kListBoxProperties, kListBoxBoundMethods};

}  // namespace

CQRNListBox::CQRNListBox() : PlainFilled(kQRNListBoxTable, kListBoxBinding) {}

std::span<const int32_t> CQRNListBox::RemadeInDesigner() const {
  static constexpr int32_t kIds[] = {ole::stock::kAppearance, ole::stock::kBorderStyle,
                                     ole::IdOf<kQRNListBoxTable, "IntegralHeight">};
  return kIds;
}

}  // namespace qrn
