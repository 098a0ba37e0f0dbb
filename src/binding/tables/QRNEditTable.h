// QRNEdit, one field as text.
#pragma once

#include "binding/tables/PageIds.h"
#include "binding/tables/StockMembers.h"

namespace qrn {

namespace edit {

using ole::kBool;
using ole::kGetHidden;
using ole::kHidden;
using ole::kRunTime;
using ole::kShort;
using ole::kText;

// clang-format off
inline constexpr PropertyRow kProperties[] = {
    kBackColorRow, kBorderStyleRow, kFontRow, kForeColorRow, kEnabledRow, kHwndRow, kTabStopRow,
    kTextRow, kAppearanceRow, kMousePointerRow, kMouseIconRow,
    { 1, "DbSource",     kText},
    { 2, "DbTable",      kText},
    { 3, "DbField",      kText},
    { 4, "MaxLength",    kShort},
    { 5, "PasswordChar", kText},
    { 6, "Format",       kText},
    { 7, "MultiLine",    kBool},
    { 8, "Alignment",    ole::Enum(kEnumAlignment)},
    { 9, "ReadOnly",     kBool},
    {10, "UpperCase",    kBool},
    {11, "IMEMode",      ole::Enum(kEnumImeMode)},
    {12, "SelStart",     kShort, kHidden | kRunTime},
    {13, "SelLength",    kShort, kHidden | kRunTime},
    {14, "SelText",      kText,  kGetHidden | kRunTime},
    {15, "NumericMask",  kBool},
    {16, "FormatOption", ole::Enum(kEnumFormatOption)},
};

inline constexpr auto kEvents = Join(kPointerEvents, std::array{EventRow{1, "Change"}});

// The extent stands twice: saved forms hold it so.
inline constexpr PersistRow kPersisted[] = {
    kCx, kCy, kCx, kCy,
    {"DbSource",     1, Page::Own},
    {"DbTable",      2, Page::Own},
    {"DbField",      3, Page::Own},
    {"MaxLength",    4},
    {"PasswordChar", 5},
    {"Format",       6},
    {"MultiLine",    7},
    {"Alignment",    8},
    {"ReadOnly",     9},
    {"UpperCase",   10},
    {"IMEMode",     11},
    {"NumericMask", 15},
    {"FormatOption", 16},
    {"Appearance",   ole::stock::kAppearance},
    {"BorderStyle",  ole::stock::kBorderStyle},
    {"BackColor",    ole::stock::kBackColor, Page::Color},
    {"ForeColor",    ole::stock::kForeColor, Page::Color},
    {"Font",         ole::stock::kFont, Page::Font},
    {"MouseIcon",    ole::stock::kMouseIcon},
    {"MousePointer", ole::stock::kMousePointer},
    {"TabStop",      ole::stock::kTabStop},
    {"Text",         ole::stock::kText},
    {"Enabled",      ole::stock::kEnabled},
};
// clang-format on

inline constexpr Guid kPageIds[] = {kQRNEditPpg, kStockColorPage, kStockFontPage};

}  // namespace edit

inline constexpr ControlTable kQRNEditTable{
    .className = "QRNEdit",
    .coclassName = "QRNEdit",
    .interfaceName = "IQRNEdit",
    .eventsName = "_DQRNEditEvents",
    .classId = MakeGuid("C54A820B-2DB8-4AAD-9286-E6BA988BEF00"),
    .interfaceId = MakeGuid("3459EC60-5F53-4451-AE25-E26A44705CB1"),
    .eventsId = MakeGuid("3EE925D7-6CED-48B3-9E37-96EFB50E4F86"),
    .registration = {102, 3, "1.1", kControlMiscStatus},
    .pages = edit::kPageIds,
    .properties = edit::kProperties,
    .methods = {},
    .events = edit::kEvents,
    .persisted = edit::kPersisted,
    .widthPx = 64,
    .heightPx = 32,
};
static_assert(ole::IsSound(kQRNEditTable));

}  // namespace qrn
