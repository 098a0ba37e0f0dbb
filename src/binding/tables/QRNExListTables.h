// QRNExComboBox and QRNExListBox, several fields in a line, read by extended operations.
#pragma once

#include "binding/tables/ListArguments.h"
#include "binding/tables/PageIds.h"

namespace qrn {

namespace exlist {

using list::kIndex;
using ole::kBool;
using ole::kHidden;
using ole::kLong;
using ole::kPutFails;
using ole::kRunTime;
using ole::kShort;
using ole::kText;

// clang-format off
inline constexpr ArgumentRow kAddItem[]    = {{"Text", kText}, {"Index", ole::kAny, true}, {"Position", ole::kLongOut}};
inline constexpr ArgumentRow kRemoveItem[] = {{"Index", kLong}, {"Position", ole::kLongOut}};

// Members 1 to 23 and 25 to 27, which both have.
inline constexpr std::array kSharedProperties = {
    PropertyRow{ 1, "DbListSource",   kText},
    PropertyRow{ 2, "DbListTable",    kText},
    PropertyRow{ 3, "DbListFields",   kText},
    PropertyRow{ 4, "DbSource",       kText},
    PropertyRow{ 5, "DbTable",        kText},
    PropertyRow{ 6, "DbField",        kText},
    PropertyRow{ 7, "DbUpdateOption", ole::Enum(kEnumUpdateOption)},
    PropertyRow{ 8, "DbConditions",   kText},
    PropertyRow{ 9, "DbLeaveResults", kBool},
    PropertyRow{10, "DbLocks",        ole::Enum(kEnumLocks)},
    PropertyRow{11, "DbExOperation",  ole::Enum(kEnumExOpCode)},
    PropertyRow{12, "DbListIndex",    kText},
    PropertyRow{13, "DbDelimitChar",  kText},
    PropertyRow{14, "DbCompareCase",  ole::Enum(kEnumDbCompareCase)},
    PropertyRow{15, "DbSkipRecords",  kShort},
    PropertyRow{16, "DbMaxRecords",   kLong},
    PropertyRow{17, "DbSavePosition", kBool},
    PropertyRow{18, "DbResultID",     kShort, kHidden},
    PropertyRow{19, "DbListIndexID",  kShort, kHidden | kPutFails},
    PropertyRow{20, "ListIndex",      kLong,  kHidden},
    PropertyRow{21, "ListCount",      kLong,  kHidden | kPutFails},
    PropertyRow{22, "Sort",           kBool},
    PropertyRow{23, "IntegralHeight", kBool},
    PropertyRow{25, "Abort",          kBool,  kHidden},
    PropertyRow{26, "ItemData",       kLong,  kHidden, kIndex},
    PropertyRow{27, "List",           kText,  kHidden, kIndex},
};
inline constexpr std::array kComboStock = {
    kBackColorRow, kFontRow, kForeColorRow, kEnabledRow, kHwndRow, kTabStopRow, kTextRow,
    kAppearanceRow, kMousePointerRow, kMouseIconRow,
};
inline constexpr std::array kListStock = {
    kBackColorRow, kBorderStyleRow, kFontRow, kForeColorRow, kEnabledRow, kHwndRow, kTabStopRow,
    kTextRow, kAppearanceRow, kMousePointerRow, kMouseIconRow,
};
inline constexpr std::array kComboOwn = {
    PropertyRow{24, "Style",     ole::Enum(kEnumComboStyle)},
    PropertyRow{32, "SelStart",  kLong, kHidden | kRunTime},
    PropertyRow{33, "SelLength", kLong, kHidden | kRunTime},
    PropertyRow{34, "SelText",   kText, kHidden | kRunTime},
    PropertyRow{35, "IMEMode",   ole::Enum(kEnumImeMode)},
};
inline constexpr std::array kListOwn = {
    PropertyRow{32, "DbTabStops", kText},
};
inline constexpr auto kComboProperties = Join(Join(kComboStock, kSharedProperties), kComboOwn);
inline constexpr auto kListProperties = Join(Join(kListStock, kSharedProperties), kListOwn);

inline constexpr MethodRow kMethods[] = {
    {28, "AddItem",    kAddItem, true},
    {29, "Clear"},
    {30, "Refresh"},
    {31, "RemoveItem", kRemoveItem, true},
    {36, "Reload"},
};

// The list fields are persisted under the singular name.
inline constexpr std::array kSharedPersisted = {
    kCx, kCy,
    PersistRow{"DbListSource",    1, Page::Own},
    PersistRow{"DbListTable",     2, Page::Own},
    PersistRow{"DbListField",     3, Page::Own},
    PersistRow{"DbSource",        4, Page::Second},
    PersistRow{"DbTable",         5, Page::Second},
    PersistRow{"DbField",         6, Page::Second},
    PersistRow{"DbUpdateOption",  7},
    PersistRow{"DbConditions",    8},
    PersistRow{"DbLeaveResults",  9},
    PersistRow{"DbLocks",        10},
    PersistRow{"DbExOperation",  11},
    PersistRow{"DbListIndex",    12, Page::Own},
    PersistRow{"DbDelimitChar",  13},
    PersistRow{"DbCompareCase",  14},
    PersistRow{"DbSkipRecords",  15},
    PersistRow{"DbMaxRecords",   16},
    PersistRow{"DbSavePosition", 17},
    PersistRow{"Sort",           22},
    PersistRow{"IntegralHeight", 23},
};
inline constexpr auto kComboPersisted = Join(kSharedPersisted, std::array{
    PersistRow{"Style",        24},
    PersistRow{"ImeMode",      35},
    PersistRow{"Appearance",   ole::stock::kAppearance},
    PersistRow{"BackColor",    ole::stock::kBackColor, Page::Color},
    PersistRow{"ForeColor",    ole::stock::kForeColor, Page::Color},
    PersistRow{"Font",         ole::stock::kFont, Page::Font},
    PersistRow{"MouseIcon",    ole::stock::kMouseIcon},
    PersistRow{"MousePointer", ole::stock::kMousePointer},
    PersistRow{"TabStop",      ole::stock::kTabStop},
    PersistRow{"Text",         ole::stock::kText},
    PersistRow{"Enabled",      ole::stock::kEnabled},
});
inline constexpr auto kListPersisted = Join(kSharedPersisted, std::array{
    PersistRow{"DbTabStops",   32},
    PersistRow{"Appearance",   ole::stock::kAppearance},
    PersistRow{"BackColor",    ole::stock::kBackColor, Page::Color},
    PersistRow{"BorderStyle",  ole::stock::kBorderStyle},
    PersistRow{"ForeColor",    ole::stock::kForeColor, Page::Color},
    PersistRow{"Font",         ole::stock::kFont, Page::Font},
    PersistRow{"MouseIcon",    ole::stock::kMouseIcon},
    PersistRow{"MousePointer", ole::stock::kMousePointer},
    PersistRow{"TabStop",      ole::stock::kTabStop},
    PersistRow{"Text",         ole::stock::kText},
    PersistRow{"Enabled",      ole::stock::kEnabled},
});
// clang-format on

// The field picker comes first.
inline constexpr Guid kComboPageIds[] = {kQRNExComboBoxPpg, kQRNExComboBoxPpg2, kStockColorPage,
                                         kStockFontPage};
inline constexpr Guid kListPageIds[] = {kQRNExListBoxPpg, kQRNExListBoxPpg2, kStockColorPage,
                                        kStockFontPage};

}  // namespace exlist

inline constexpr ControlTable kQRNExComboBoxTable{
    .className = "QRNExComboBox",
    .coclassName = "QRNExComboBox",
    .interfaceName = "IQRNExComboBox",
    .eventsName = "_DQRNExComboBoxEvents",
    .classId = MakeGuid("FFCA6C5D-1558-4F47-9734-845489C59F46"),
    .interfaceId = MakeGuid("16684C02-1D1B-4C39-A84C-0F1F60D04933"),
    .eventsId = MakeGuid("6AC7E41B-78A0-4677-B3F3-BE964A5B6712"),
    .registration = {250, 13, "1.1", kControlMiscStatus},
    .pages = exlist::kComboPageIds,
    .properties = exlist::kComboProperties,
    .methods = exlist::kMethods,
    .events = list::kComboEvents,
    .persisted = exlist::kComboPersisted,
    .widthPx = kDefaultWidthPx,
    .heightPx = kDefaultHeightPx,
};
inline constexpr ControlTable kQRNExListBoxTable{
    .className = "QRNExListBox",
    .coclassName = "QRNExListBox",
    .interfaceName = "IQRNExListBox",
    .eventsName = "_DQRNExListBoxEvents",
    .classId = MakeGuid("15B293C4-CACE-47B9-AF79-10995A20822D"),
    .interfaceId = MakeGuid("AD5FE5FA-6D01-408C-941F-B24BC1ACE480"),
    .eventsId = MakeGuid("28B28FC3-1B24-443A-9DCE-A26E3D7FDAD6"),
    .registration = {256, 14, "1.1", kControlMiscStatus},
    .pages = exlist::kListPageIds,
    .properties = exlist::kListProperties,
    .methods = exlist::kMethods,
    .events = list::kListEvents,
    .persisted = exlist::kListPersisted,
    .widthPx = 64,
    .heightPx = 64,
};
static_assert(ole::IsSound(kQRNExComboBoxTable) && ole::IsSound(kQRNExListBoxTable));

}  // namespace qrn
