// QRNGrid, the table control.
#pragma once

#include "binding/tables/PageIds.h"
#include "binding/tables/StockMembers.h"

namespace qrn {

namespace grid {

using ole::kBool;
using ole::kHidden;
using ole::kLong;
using ole::kPutFails;
using ole::kRepaint;
using ole::kShort;
using ole::kStoreOnly;
using ole::kText;

// clang-format off
inline constexpr ArgumentRow kIndex[]  = {{"Index", kLong}};
inline constexpr ArgumentRow kLIndex[] = {{"lIndex", kLong}};

inline constexpr PropertyRow kProperties[] = {
    kBackColorRow, kBorderStyleRow, kFontRow, kForeColorRow, kEnabledRow, kHwndRow, kTabStopRow,
    {ole::stock::kText, "Text", kText},  // repaints by itself, one cell where one changes
    {ole::stock::kAppearance, "Appearance", ole::kShort, kRepaint, {}, kAppearanceChoices},
    kMousePointerRow, kMouseIconRow,
    { 1, "DbListSource",      kText, ole::kUnlessSame},
    { 2, "DbListTable",       kText, ole::kUnlessSame},
    { 3, "DbListFields",      kText, ole::kUnlessSame},
    { 4, "SelStartCol",       kLong,  kHidden | kRepaint},
    { 5, "SelEndCol",         kLong,  kHidden | kRepaint},
    { 6, "SelStartRow",       kLong,  kHidden | kRepaint},
    { 7, "SelEndRow",         kLong,  kHidden},
    { 8, "DbConditions",      kText},
    { 9, "Abort",             kBool,  kHidden},
    {10, "Cols",              kLong,  kRepaint},
    {11, "Rows",              kLong,  kRepaint},
    {12, "FixedCols",         kLong,  kRepaint},
    {13, "FixedRows",         kLong,  kRepaint},
    {14, "DbCompareCase",     ole::Enum(kEnumDbCompareCase)},
    {15, "DbExOperation",     ole::Enum(kEnumExOpCode)},
    {16, "DbLeaveResults",    kBool},
    {17, "DbLocks",           ole::Enum(kEnumLocks)},
    {18, "DbResultID",        kShort, kHidden},
    {19, "DbMaxRecords",      kLong},
    {20, "DbSkipRecords",     kShort},
    {21, "DbUpdateOption",    ole::Enum(kEnumGridUpdateOption)},
    {22, "GridLines",         kBool,  kRepaint},
    {23, "HighLight",         kBool},
    {24, "FillStyle",         ole::Enum(kEnumGridFillStyle)},
    {25, "GridLineWidth",     kLong,  kHidden | kRepaint},
    {26, "Col",               kLong,  kHidden | kRepaint},
    {27, "Row",               kLong,  kHidden},
    {28, "SetColNames",       kBool},
    {29, "SetRecordNumbers",  kBool},
    {30, "DbListIndex",       kText},
    {31, "ScrollBars",        ole::Enum(kEnumGridSc)},
    {32, "RowHeight",         kLong,  0, kLIndex},
    {33, "ColWidth",          kLong,  kHidden, kIndex},
    {36, "FormatString",      kText,  kHidden, kLIndex},
    {37, "AllowUpdate",       kBool},
    {38, "AllowDelete",       kBool},
    {39, "CellMaxLength",     kShort, kHidden, kLIndex},
    {40, "DbPhysicalPosition", kLong, kHidden | kPutFails, kIndex},
    {41, "TextAlign",         kShort, kHidden, kIndex},
    {42, "AlignFixedCells",   kBool},
    {43, "IMEMode",           ole::Enum(kEnumImeMode), kHidden, kIndex},
    {44, "SetColWidth",       kBool},
    {45, "AllowUserResizing", ole::Enum(kEnumGridResizing)},
};
inline constexpr MethodRow kMethods[] = {
    {ole::stock::kRefresh, "Refresh"},
    {35, "Clear"},
    {46, "Reload"},
};

inline constexpr ArgumentRow kError[]     = {{"TableName", kText}, {"sStatus", ole::kShortOut}};
inline constexpr ArgumentRow kFormat[]    = {{"strText", ole::kTextOut}};
inline constexpr ArgumentRow kCancel[]    = {{"pCancel", ole::kShortOut}};
inline constexpr ArgumentRow kColUpdate[] = {{"pCancel", ole::kShortOut}, {"ColValue", kText}};
inline constexpr auto kEvents = Join(kPointerEvents, std::array{
    EventRow{ 1, "BtrieveError", kError},
    EventRow{ 2, "Format", kFormat},
    EventRow{ 3, "Change"},
    EventRow{ 4, "SelChange"},
    EventRow{ 5, "AfterUpdate"},
    EventRow{ 6, "AfterDelete"},
    EventRow{ 7, "BeforeUpdate", kCancel},
    EventRow{ 8, "BeforeDelete", kCancel},
    EventRow{ 9, "AfterColUpdate"},
    EventRow{10, "BeforeColUpdate", kColUpdate},
});

inline constexpr PersistRow kPersisted[] = {
    kCx, kCy,
    {"DbListSource",      1, Page::Own},
    {"DbListTable",       2, Page::Own},
    {"DbListFields",      3, Page::Own},
    {"DbConditions",      8},
    {"Cols",             10},
    {"Rows",             11},
    {"FixedCols",        12},
    {"FixedRows",        13},
    {"DbCompareCase",    14},
    {"DbExOperation",    15},
    {"DbLeaveResults",   16},
    {"DbLocks",          17},
    {"DbMaxRecords",     19},
    {"DbSkipRecords",    20},
    {"DbUpdateOption",   21},
    {"GridLines",        22},
    {"HighLight",        23},
    {"FillStyle",        24},
    {"GridLineWidth",    25},
    {"SetColNames",      28},
    {"SetRecordNumbers", 29},
    {"DbListIndex",      30, Page::Own},
    {"ScrollBars",       31},
    {"AllowUpdate",      37},
    {"AllowDelete",      38},
    {"AlignFixedCells",  42},
    {"SetColWidth",      44},
    {"AllowUserResizing", 45},
    {"Appearance",       ole::stock::kAppearance},
    {"BackColor",        ole::stock::kBackColor, Page::Color},
    {"BorderStyle",      ole::stock::kBorderStyle},
    {"ForeColor",        ole::stock::kForeColor, Page::Color},
    {"Font",             ole::stock::kFont, Page::Font},
    {"MouseIcon",        ole::stock::kMouseIcon},
    {"MousePointer",     ole::stock::kMousePointer},
    {"TabStop",          ole::stock::kTabStop},
    {"Enabled",          ole::stock::kEnabled},
};
// clang-format on

inline constexpr Guid kPageIds[] = {kQRNGridPpg, kStockColorPage, kStockFontPage};

}  // namespace grid

inline constexpr ControlTable kQRNGridTable{
    .className = "QRNGrid",
    .coclassName = "QRNGrid",
    .interfaceName = "IQRNGrid",
    .eventsName = "_DQRNGridEvents",
    .classId = MakeGuid("C2BF7E82-EBA6-4822-942F-705776DBC1D7"),
    .interfaceId = MakeGuid("CB078CEF-026D-40F7-80E8-71AF08D04FBF"),
    .eventsId = MakeGuid("69006721-751B-4A83-B0F3-D07824FB2685"),
    .registration = {110, 11, "1.0", kControlMiscStatus},
    .pages = grid::kPageIds,
    .properties = grid::kProperties,
    .methods = grid::kMethods,
    .events = grid::kEvents,
    .persisted = grid::kPersisted,
    .widthPx = 64,
    .heightPx = 64,
};
static_assert(ole::IsSound(kQRNGridTable));

}  // namespace qrn
