// QRNComboBox and QRNListBox, filled from a table. Their ids differ though their members are alike.
#pragma once

#include "binding/tables/ListArguments.h"
#include "binding/tables/PageIds.h"

namespace qrn {

namespace list {

using ole::kBool;
using ole::kHidden;
using ole::kLong;
using ole::kPutFails;
using ole::kRunTime;
using ole::kText;

// clang-format off
// The index may be left out: the item then goes where the list puts it.
inline constexpr ArgumentRow kAddItem[]    = {{"Text", kText}, {"lIndex", ole::kAny, true}, {"pRet", ole::kLongOut}};
inline constexpr ArgumentRow kRemoveItem[] = {{"lIndex", kLong}, {"pRet", ole::kLongOut}};

inline constexpr PropertyRow kComboProperties[] = {
    kBackColorRow, kFontRow, kForeColorRow, kEnabledRow, kHwndRow, kTabStopRow, kTextRow,
    kAppearanceRow, kMousePointerRow, kMouseIconRow,
    { 1, "Style",          ole::Enum(kEnumComboStyle)},
    { 2, "IntegralHeight", kBool},
    { 3, "Sort",           kBool},
    { 4, "ListCount",      kLong, kHidden | kPutFails},
    { 5, "ListIndex",      kLong, kHidden},
    { 6, "SelStart",       kLong, kHidden | kRunTime},
    { 7, "SelLength",      kLong, kHidden | kRunTime},
    { 8, "SelText",        kText, kHidden | kRunTime},
    { 9, "DbSource",       kText},
    {10, "DbTable",        kText},
    {11, "DbField",        kText},
    {12, "DbListSource",   kText},
    {13, "DbListTable",    kText},
    {14, "DbListField",    kText},
    {15, "DbListIndex",    kText},
    {16, "IMEMode",        ole::Enum(kEnumImeMode)},
    {17, "DbUpdateOption", ole::Enum(kEnumUpdateOption)},
    {18, "List",           kText, kHidden, kIndex},
    {23, "Abort",          kBool, kHidden},
};
inline constexpr MethodRow kComboMethods[] = {
    {19, "Clear"},
    {20, "AddItem",    kAddItem, true},
    {21, "Refresh"},
    {22, "RemoveItem", kRemoveItem, true},
    {24, "Reload"},
};

inline constexpr PropertyRow kListProperties[] = {
    kBackColorRow, kBorderStyleRow, kFontRow, kForeColorRow, kEnabledRow, kHwndRow, kTabStopRow,
    kTextRow, kAppearanceRow, kMousePointerRow, kMouseIconRow,
    { 1, "Sort",           kBool},
    { 2, "IntegralHeight", kBool},
    { 3, "ListCount",      kLong, kHidden | kPutFails},
    { 4, "ListIndex",      kLong, kHidden},
    { 5, "List",           kText, kHidden, kIndex},
    { 6, "ItemData",       kLong, kHidden, kIndex},
    {10, "Abort",          kBool, kHidden},
    {11, "DbSource",       kText},
    {12, "DbTable",        kText},
    {13, "DbField",        kText},
    {14, "DbListSource",   kText},
    {15, "DbListTable",    kText},
    {16, "DbListField",    kText},
    {17, "DbListIndex",    kText},
    {18, "DbUpdateOption", ole::Enum(kEnumUpdateOption)},
};
inline constexpr MethodRow kListMethods[] = {
    { 7, "AddItem",    kAddItem, true},
    { 8, "Clear"},
    { 9, "RemoveItem", kRemoveItem, true},
    {19, "Refresh"},
    {20, "Reload"},
};

inline constexpr PersistRow kComboPersisted[] = {
    kCx, kCy,
    {"Style",           1},
    {"IntegralHeight",  2},
    {"Sort",            3},
    {"DbSource",        9, Page::Own},
    {"DbTable",        10, Page::Own},
    {"DbField",        11, Page::Own},
    {"DbListSource",   12, Page::Own},
    {"DbListTable",    13, Page::Own},
    {"DbListField",    14, Page::Own},
    {"DbListIndex",    15, Page::Own},
    {"ImeMode",        16},
    {"DbUpdateOption", 17},
    {"Appearance",     ole::stock::kAppearance},
    {"BackColor",      ole::stock::kBackColor, Page::Color},
    {"ForeColor",      ole::stock::kForeColor, Page::Color},
    {"Font",           ole::stock::kFont, Page::Font},
    {"MouseIcon",      ole::stock::kMouseIcon},
    {"MousePointer",   ole::stock::kMousePointer},
    {"TabStop",        ole::stock::kTabStop},
    {"Text",           ole::stock::kText},
    {"Enabled",        ole::stock::kEnabled},
};
inline constexpr PersistRow kListPersisted[] = {
    kCx, kCy,
    {"Sort",            1},
    {"IntegralHeight",  2},
    {"DbSource",       11, Page::Own},
    {"DbTable",        12, Page::Own},
    {"DbField",        13, Page::Own},
    {"DbListSource",   14, Page::Own},
    {"DbListTable",    15, Page::Own},
    {"DbListField",    16, Page::Own},
    {"DbListIndex",    17, Page::Own},
    {"DbUpdateOption", 18},
    {"Appearance",     ole::stock::kAppearance},
    {"BorderStyle",    ole::stock::kBorderStyle},
    {"BackColor",      ole::stock::kBackColor, Page::Color},
    {"ForeColor",      ole::stock::kForeColor, Page::Color},
    {"Font",           ole::stock::kFont, Page::Font},
    {"MouseIcon",      ole::stock::kMouseIcon},
    {"MousePointer",   ole::stock::kMousePointer},
    {"TabStop",        ole::stock::kTabStop},
    {"Text",           ole::stock::kText},
    {"Enabled",        ole::stock::kEnabled},
};
// clang-format on

inline constexpr Guid kComboPageIds[] = {kQRNComboBoxPpg, kStockColorPage, kStockFontPage};
inline constexpr Guid kListPageIds[] = {kQRNListBoxPpg, kStockColorPage, kStockFontPage};

}  // namespace list

inline constexpr ControlTable kQRNComboBoxTable{
    .className = "QRNComboBox",
    .coclassName = "QRNComboBox",
    .interfaceName = "IQRNComboBox",
    .eventsName = "_DQRNComboBoxEvents",
    .classId = MakeGuid("40A3DDC4-C652-41C7-BFE3-C701F8E66E9D"),
    .interfaceId = MakeGuid("BB856E4B-556D-4943-9E65-8221C2D3428A"),
    .eventsId = MakeGuid("D50798DA-EF89-4C8F-9020-380D31AFD1D2"),
    .registration = {104, 4, "1.1", kControlMiscStatus},
    .pages = list::kComboPageIds,
    .properties = list::kComboProperties,
    .methods = list::kComboMethods,
    .events = list::kComboEvents,
    .persisted = list::kComboPersisted,
    .widthPx = kDefaultWidthPx,
    .heightPx = kDefaultHeightPx,
};
inline constexpr ControlTable kQRNListBoxTable{
    .className = "QRNListBox",
    .coclassName = "QRNListBox",
    .interfaceName = "IQRNListBox",
    .eventsName = "_DQRNListBoxEvents",
    .classId = MakeGuid("8F654E47-18A4-480A-8F84-188073E485F6"),
    .interfaceId = MakeGuid("4260A745-EF2A-44DA-8FB6-A4AFF6BB8729"),
    .eventsId = MakeGuid("DB2E01BB-BB67-44EF-89B3-F326C17D2101"),
    .registration = {105, 5, "1.1", kControlMiscStatus},
    .pages = list::kListPageIds,
    .properties = list::kListProperties,
    .methods = list::kListMethods,
    .events = list::kListEvents,
    .persisted = list::kListPersisted,
    .widthPx = 64,
    .heightPx = 64,
};
static_assert(ole::IsSound(kQRNComboBoxTable) && ole::IsSound(kQRNListBoxTable));

}  // namespace qrn
