#include "controls/scroll/QRNScroll.h"

#include "binding/tables/QRNScrollTables.h"

namespace qrn {
namespace {

using C = RecordBar;

// clang-format off
constexpr ole::PropertyEntry kAccess[] = {
    { 3, ole::Field<&C::DbIndex>},
    { 4, ole::Field<&C::LargeChange>},
    { 5, ole::Field<&C::SmallChange>},
    { 6, ole::Field<&C::Max>},
    { 7, ole::Field<&C::Min>},
    { 8, ole::Field<&C::Value>},
    {10, ole::Field<&C::AutoFirst>},
};
constexpr ole::MethodEntry kMethods[] = {
    { 9, ole::Method<&C::Refresh>},
    {11, ole::Method<&C::Refresh>},
};
// clang-format on

template <const ole::ControlTable& Table>
constexpr auto kProperties = ole::BindProperties<Table>(kAccess, kTableAccess<C>,
                                                        ole::kStockAccess);
template <const ole::ControlTable& Table>
constexpr auto kBoundMethods = ole::BindMethods<Table>(kMethods);
template <const ole::ControlTable& Table>
constexpr ole::Binding kBinding{kProperties<Table>, kBoundMethods<Table>};

}  // namespace

CQRNHScroll::CQRNHScroll()
    : RecordBar(kQRNHScrollTable, kBinding<kQRNHScrollTable>, kHorizontalOrientation) {}
CQRNVScroll::CQRNVScroll()
    : RecordBar(kQRNVScrollTable, kBinding<kQRNVScrollTable>, kVerticalOrientation) {}

}  // namespace qrn
