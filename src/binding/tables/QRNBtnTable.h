// QRNBtn, the operation button.
#pragma once

#include "binding/tables/PageIds.h"
#include "binding/tables/StockMembers.h"

namespace qrn {

namespace btn {

using ole::kBool;
using ole::kHidden;
using ole::kShort;
using ole::kText;

// clang-format off
inline constexpr PropertyRow kProperties[] = {
    kBackColorRow, kFontRow, kEnabledRow, kHwndRow, kTabStopRow, kCaptionRow, kAppearanceRow,
    kMousePointerRow, kMouseIconRow, kPictureRow,
    { 1, "DbSource",         kText},
    { 2, "DbTable",          kText},
    { 3, "DbIndex",          kText},
    { 4, "DbOperation",      ole::Enum(kEnumDbOperation)},
    { 5, "Abort",            kBool, kHidden},
    { 6, "ConfirmMsg",       kText},
    { 7, "Cancel",           kBool},
    { 8, "Default",          kBool},
    { 9, "DbLocks",          ole::Enum(kEnumLocks)},
    {10, "ClearControlData", kBool},
    {11, "IndexID",          kShort, kHidden},
    {12, "Style",            ole::Enum(kEnumBtnStyle)},
};

inline constexpr auto kEvents = Join(
    Join(std::array{kClickEvent}, kKeyAndMouseEvents),
    std::array{EventRow{1, "BtrieveError", kBtrieveErrorArguments}, EventRow{2, "SetData"}});

inline constexpr PersistRow kPersisted[] = {
    kCx, kCy,
    {"DbSource",         1, Page::Own},
    {"DbTable",          2, Page::Own},
    {"DbIndex",          3, Page::Own},
    {"DbOperation",      4, Page::Own},
    {"Abort",            5},
    {"ConfirmMsg",       6},
    {"Cancel",           7},
    {"Default",          8},
    {"DbLocks",          9},
    {"ClearControlData", 10},
    {"Style",           12},
    {"Appearance",       ole::stock::kAppearance},
    {"BackColor",        ole::stock::kBackColor, Page::Color},
    {"Font",             ole::stock::kFont, Page::Font},
    {"Caption",          ole::stock::kCaption},
    {"MouseIcon",        ole::stock::kMouseIcon},
    {"MousePointer",     ole::stock::kMousePointer},
    {"Picture",          ole::stock::kPicture, Page::Picture},
    {"TabStop",          ole::stock::kTabStop},
    {"Enabled",          ole::stock::kEnabled},
};
// clang-format on

inline constexpr Guid kPageIds[] = {kQRNBtnPpg, kStockColorPage, kStockFontPage, kStockPicturePage};

}  // namespace btn

inline constexpr ControlTable kQRNBtnTable{
    .className = "QRNBtn",
    .coclassName = "QRNBtn",
    .interfaceName = "IQRNBtn",
    .eventsName = "_DQRNBtnEvents",
    .classId = MakeGuid("17513ADC-05EF-45D9-BB9C-E0A73C2BEA62"),
    .interfaceId = MakeGuid("D0EABC1A-CE00-4E52-BD32-EBD389229C6B"),
    .eventsId = MakeGuid("C0A0A386-4C84-4107-8C48-6E8494B675EA"),
    .registration = {103, 2, "1.1", kButtonMiscStatus},
    .pages = btn::kPageIds,
    .properties = btn::kProperties,
    .methods = {},
    .events = btn::kEvents,
    .persisted = btn::kPersisted,
    .widthPx = 64,
    .heightPx = 32,
};
static_assert(ole::IsSound(kQRNBtnTable));

}  // namespace qrn
