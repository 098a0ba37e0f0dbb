// What the two controls of the extended fill have under the same ids.
#pragma once

#include "ole/Bind.h"

namespace qrn {

// `C` derives from ExtendedFilled.
// clang-format off
template <class C>
inline constexpr ole::PropertyEntry kExtendedAccess[] = {
    {ole::stock::kText, ole::Pair<&C::GetText, &C::PutText>},
    { 1, ole::Field<&C::DbListSource>},
    { 2, ole::Field<&C::DbListTable>},
    { 3, ole::Field<&C::DbListFields>},
    { 4, ole::Field<&C::DbSource>},
    { 5, ole::Field<&C::DbTable>},
    { 6, ole::Field<&C::DbField>},
    { 7, ole::Field<&C::DbUpdateOption>},
    { 8, ole::Field<&C::DbConditions>},
    { 9, ole::Field<&C::DbLeaveResults, C>},
    {10, ole::Field<&C::DbLocks, C>},
    {11, ole::Field<&C::DbExOperation, C>},
    {12, ole::Field<&C::DbListIndex>},
    {13, ole::Field<&C::DbDelimitChar>},
    {14, ole::Field<&C::DbCompareCase, C>},
    {15, ole::Field<&C::DbSkipRecords, C>},
    {16, ole::Field<&C::DbMaxRecords, C>},
    {17, ole::Field<&C::DbSavePosition>},
    {18, ole::Field<&C::DbResultID, C>},
    {19, ole::Field<&C::DbListIndexID>},
    {20, ole::Pair<&C::GetListIndex, &C::PutListIndex>},
    {21, ole::Getter<&C::GetListCount>},
    {22, ole::Field<&C::Sort>},
    {23, ole::Field<&C::IntegralHeight>},
    {25, ole::Field<&C::Abort>},
    {26, ole::Pair<&C::GetItemData, &C::PutItemData>},
    {27, ole::Pair<&C::GetList, &C::PutList>},
};
template <class C>
inline constexpr ole::MethodEntry kExtendedMethods[] = {
    {28, ole::Method<&C::AddItem>},
    {29, ole::Method<&C::Clear>},
    {30, ole::Method<&C::Refresh>},
    {31, ole::Method<&C::RemoveItem>},
    {36, ole::Method<&C::Refresh>},
};
// clang-format on

}  // namespace qrn
