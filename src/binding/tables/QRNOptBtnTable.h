// QRNOptBtn, one choice of a group bound to one field.
#pragma once

#include "binding/tables/PageIds.h"
#include "binding/tables/StockMembers.h"

namespace qrn {

namespace optbtn {

using ole::kBool;
using ole::kRepaint;
using ole::kText;

// clang-format off
inline constexpr PropertyRow kProperties[] = {
    kBackColorRow, kFontRow, kForeColorRow, kEnabledRow, kHwndRow, kTabStopRow, kCaptionRow,
    kAppearanceRow, kMousePointerRow, kMouseIconRow,
    {1, "DbSource",     kText},
    {2, "DbTable",      kText},
    {3, "DbField",      kText},
    {4, "DbValueTrue",  kText},
    {5, "DbValueFalse", kText},
    {6, "Value",        kBool, kRepaint},
    {7, "Alignment",    ole::Enum(kEnumOptBtnAlignment)},
};

inline constexpr PersistRow kPersisted[] = {
    kCx, kCy,
    {"DbSource",     1, Page::Own},
    {"DbTable",      2, Page::Own},
    {"DbField",      3, Page::Own},
    {"DbValueTrue",  4},
    {"DbValueFalse", 5},
    {"Alignment",    7},
    {"Appearance",   ole::stock::kAppearance},
    {"BackColor",    ole::stock::kBackColor, Page::Color},
    {"Caption",      ole::stock::kCaption},
    {"ForeColor",    ole::stock::kForeColor, Page::Color},
    {"Font",         ole::stock::kFont, Page::Font},
    {"MouseIcon",    ole::stock::kMouseIcon},
    {"MousePointer", ole::stock::kMousePointer},
    {"TabStop",      ole::stock::kTabStop},
    {"Enabled",      ole::stock::kEnabled},
};
// clang-format on

inline constexpr Guid kPageIds[] = {kQRNOptBtnPpg, kStockColorPage, kStockFontPage};

}  // namespace optbtn

inline constexpr ControlTable kQRNOptBtnTable{
    .className = "QRNOptBtn",
    .coclassName = "QRNOptBtn",
    .interfaceName = "IQRNOptBtn",
    .eventsName = "_DQRNOptBtnEvents",
    .classId = MakeGuid("00CF2A77-57CD-43BB-BDE8-7B2EDD51CC04"),
    .interfaceId = MakeGuid("355BF051-C9A8-4292-A722-0D604F18DCE1"),
    .eventsId = MakeGuid("C91C2CFD-C34E-4C46-807C-3607B8F7253F"),
    .registration = {109, 10, "1.1", kControlMiscStatus},
    .pages = optbtn::kPageIds,
    .properties = optbtn::kProperties,
    .methods = {},
    .events = kPointerEvents,
    .persisted = optbtn::kPersisted,
    .widthPx = 64,
    .heightPx = 32,
};
static_assert(ole::IsSound(kQRNOptBtnTable));

}  // namespace qrn
