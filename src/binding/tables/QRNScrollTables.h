// QRNHScroll and QRNVScroll, the record scroll bars: one interface in two directions.
#pragma once

#include "binding/tables/PageIds.h"
#include "binding/tables/StockMembers.h"

namespace qrn {

namespace scroll {

using ole::kBool;
using ole::kLong;
using ole::kText;

// clang-format off
inline constexpr PropertyRow kProperties[] = {
    kEnabledRow, kHwndRow, kTabStopRow, kMousePointerRow, kMouseIconRow,
    { 1, "DbSource",    kText, ole::kUnlessSame},
    { 2, "DbTable",     kText, ole::kUnlessSame},
    { 3, "DbIndex",     kText, ole::kUnlessSame},
    { 4, "LargeChange", kLong},
    { 5, "SmallChange", kLong},
    { 6, "Max",         kLong},
    { 7, "Min",         kLong},
    { 8, "Value",       kLong},
    {10, "AutoFirst",   kBool},
};

inline constexpr MethodRow kMethods[] = {
    { 9, "Refresh"},
    {11, "Reload"},
};

inline constexpr auto kEvents =
    Join(std::array{EventRow{1, "BtrieveError", kBtrieveErrorArguments}, EventRow{2, "Change"},
                    EventRow{3, "Scroll"}},
         kKeyEvents);

inline constexpr PersistRow kPersisted[] = {
    kCx, kCy,
    {"DbSource",     1, Page::Own},
    {"DbTable",      2, Page::Own},
    {"DbIndex",      3, Page::Own},
    {"LargeChange",  4},
    {"SmallChange",  5},
    {"Max",          6},
    {"Min",          7},
    {"MouseIcon",    ole::stock::kMouseIcon},
    {"MousePointer", ole::stock::kMousePointer},
    {"TabStop",      ole::stock::kTabStop},
    {"Enabled",      ole::stock::kEnabled},
};
// clang-format on

inline constexpr Guid kHorizontalPageIds[] = {kQRNHScrollPpg};
inline constexpr Guid kVerticalPageIds[] = {kQRNVScrollPpg};

}  // namespace scroll

inline constexpr ControlTable kQRNHScrollTable{
    .className = "QRNHScroll",
    .coclassName = "QRNHScroll",
    .interfaceName = "IQRNHScroll",
    .eventsName = "_DQRNHScrollEvents",
    .classId = MakeGuid("C17ED96B-8788-460D-BFFE-6CBFB4A832A7"),
    .interfaceId = MakeGuid("C66CE200-868F-4621-AE24-73774C650865"),
    .eventsId = MakeGuid("FBCD18B1-FA6C-46DB-BC78-2A2294FEC3C6"),
    .registration = {106, 6, "1.1", kControlMiscStatus},
    .pages = scroll::kHorizontalPageIds,
    .properties = scroll::kProperties,
    .methods = scroll::kMethods,
    .events = scroll::kEvents,
    .persisted = scroll::kPersisted,
    .widthPx = 64,
    .heightPx = 32,
};
inline constexpr ControlTable kQRNVScrollTable{
    .className = "QRNVScroll",
    .coclassName = "QRNVScroll",
    .interfaceName = "IQRNVScroll",
    .eventsName = "_DQRNVScrollEvents",
    .classId = MakeGuid("2290C242-12A1-4D78-A14D-1C7D3C71142D"),
    .interfaceId = MakeGuid("11CE6C4B-B648-447F-94A8-9FEC9C790180"),
    .eventsId = MakeGuid("7F71BA8F-7717-48F4-9C29-C61CA4E3EA75"),
    .registration = {107, 7, "1.1", kControlMiscStatus},
    .pages = scroll::kVerticalPageIds,
    .properties = scroll::kProperties,
    .methods = scroll::kMethods,
    .events = scroll::kEvents,
    .persisted = scroll::kPersisted,
    .widthPx = 32,
    .heightPx = 64,
};
static_assert(ole::IsSound(kQRNHScrollTable) && ole::IsSound(kQRNVScrollTable));

}  // namespace qrn
