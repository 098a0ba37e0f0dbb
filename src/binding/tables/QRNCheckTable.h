// QRNCheck, a field as a mark.
#pragma once

#include "binding/tables/PageIds.h"
#include "binding/tables/StockMembers.h"

namespace qrn {

namespace check {

using ole::kBool;
using ole::kText;

// clang-format off
inline constexpr PropertyRow kProperties[] = {
    kBackColorRow, kFontRow, kForeColorRow, kEnabledRow, kHwndRow, kTabStopRow, kCaptionRow,
    kAppearanceRow, kMousePointerRow, kMouseIconRow,
    {1, "DbSource",             kText},
    {2, "DbTable",              kText},
    {3, "DbField",              kText},
    {4, "DbValueTrue",          kText},
    {5, "DbValueFalse",         kText},
    {6, "Value",                kBool},
    {7, "Alignment",            ole::Enum(kEnumCheckAlignment)},
    {8, "DbValueIndeterminate", kText},
};

inline constexpr PersistRow kPersisted[] = {
    kCx, kCy,
    {"DbSource",             1, Page::Own},
    {"DbTable",              2, Page::Own},
    {"DbField",              3, Page::Own},
    {"DbValueTrue",          4},
    {"DbValueFalse",         5},
    {"Alignment",            7},
    {"DbValueIndeterminate", 8},
    {"Appearance",           ole::stock::kAppearance},
    {"BackColor",            ole::stock::kBackColor, Page::Color},
    {"Caption",              ole::stock::kCaption},
    {"ForeColor",            ole::stock::kForeColor, Page::Color},
    {"Font",                 ole::stock::kFont, Page::Font},
    {"MouseIcon",            ole::stock::kMouseIcon},
    {"MousePointer",         ole::stock::kMousePointer},
    {"TabStop",              ole::stock::kTabStop},
    {"Enabled",              ole::stock::kEnabled},
};
// clang-format on

inline constexpr Guid kPageIds[] = {kQRNCheckPpg, kStockColorPage, kStockFontPage};

}  // namespace check

inline constexpr ControlTable kQRNCheckTable{
    .className = "QRNCheck",
    .coclassName = "QRNCheck",
    .interfaceName = "IQRNCheck",
    .eventsName = "_DQRNCheckEvents",
    .classId = MakeGuid("456DFD56-EDD4-4C03-B9F4-3FA7302B3C72"),
    .interfaceId = MakeGuid("92BC29B5-4506-4C8D-A33E-DD3B021DD12F"),
    .eventsId = MakeGuid("575E5DD8-8274-44E3-AB85-53390CA2C635"),
    .registration = {108, 8, "1.1", kControlMiscStatus},
    .pages = check::kPageIds,
    .properties = check::kProperties,
    .methods = {},
    .events = kPointerEvents,
    .persisted = check::kPersisted,
    .widthPx = 64,
    .heightPx = 32,
};
static_assert(ole::IsSound(kQRNCheckTable));

}  // namespace qrn
