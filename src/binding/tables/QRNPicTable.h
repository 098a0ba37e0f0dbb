// QRNPic, the picture whose file a field names.
#pragma once

#include "binding/tables/PageIds.h"
#include "binding/tables/StockMembers.h"

namespace qrn {

namespace pic {

using ole::kBool;
using ole::kHidden;
using ole::kRepaint;
using ole::kShort;
using ole::kStoreOnly;
using ole::kText;

// clang-format off
inline constexpr PropertyRow kProperties[] = {
    kBackColorRow, kBorderStyleRow, kFontRow, kForeColorRow, kEnabledRow, kAppearanceRow,
    kMousePointerRow, kMouseIconRow, kPictureRow, kHwndRow,
    {1, "DbSource",    kText},
    {2, "DbTable",     kText},
    {3, "DbField",     kText},
    {4, "PictureType", kShort, kHidden | kStoreOnly},
    {5, "Stretch",     kBool,  kRepaint},
    {6, "BlobPath",    kText,  kStoreOnly},
};

inline constexpr auto kEvents = Join(kPointerEvents, std::array{EventRow{1, "Change"}});

inline constexpr PersistRow kPersisted[] = {
    kCx, kCy,
    {"DbSource",     1, Page::Own},
    {"DbTable",      2, Page::Own},
    {"DbField",      3, Page::Own},
    {"Stretch",      5},
    {"BlobPath",     6},
    {"Appearance",   ole::stock::kAppearance},
    {"BackColor",    ole::stock::kBackColor, Page::Color},
    {"BorderStyle",  ole::stock::kBorderStyle},
    {"Enabled",      ole::stock::kEnabled},
    {"ForeColor",    ole::stock::kForeColor, Page::Color},
    {"Font",         ole::stock::kFont, Page::Font},
    {"MouseIcon",    ole::stock::kMouseIcon},
    {"MousePointer", ole::stock::kMousePointer},
    {"Picture",      ole::stock::kPicture},
};
// clang-format on

inline constexpr Guid kPageIds[] = {kQRNPicPpg, kStockColorPage, kStockFontPage};

}  // namespace pic

inline constexpr ControlTable kQRNPicTable{
    .className = "QRNPic",
    .coclassName = "QRNPic",
    .interfaceName = "IQRNPic",
    .eventsName = "_DQRNPicEvents",
    .classId = MakeGuid("EC3DD67A-2961-4864-BCA6-57E5242401DE"),
    .interfaceId = MakeGuid("0F16D845-BE23-4793-8DD1-B6A753CFE32C"),
    .eventsId = MakeGuid("91D7D908-EE44-4951-9502-B4CC5B81CDDF"),
    .registration = {111, 12, "1.1", kControlMiscStatus},
    .pages = pic::kPageIds,
    .properties = pic::kProperties,
    .methods = {},
    .events = pic::kEvents,
    .persisted = pic::kPersisted,
    .widthPx = 64,
    .heightPx = 64,
};
static_assert(ole::IsSound(kQRNPicTable));

}  // namespace qrn
