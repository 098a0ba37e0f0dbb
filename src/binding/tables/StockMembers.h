// Members that several controls have alike: the stock properties and the events of mouse, keys and
// clicks.
#pragma once

#include <array>

#include "binding/tables/Enumerations.h"
#include "ole/tables/MemberChecks.h"
#include "ole/tables/StockEvents.h"

namespace qrn {

using ole::ArgumentRow;
using ole::ControlTable;
using ole::EventRow;
using ole::Guid;
using ole::kClickEvent;
using ole::kCx;
using ole::kCy;
using ole::kDblClickEvent;
using ole::kKeyDownEvent;
using ole::kKeyPressEvent;
using ole::kKeyUpEvent;
using ole::kMouseDownEvent;
using ole::kMouseMoveEvent;
using ole::kMouseUpEvent;
using ole::MethodRow;
using ole::Page;
using ole::PersistRow;
using ole::PropertyRow;

// Two row lists as one.
template <class Row, size_t A, size_t B>
consteval std::array<Row, A + B> Join(const std::array<Row, A>& first,
                                      const std::array<Row, B>& second) {
  std::array<Row, A + B> all{};
  for (size_t i = 0; i < A; ++i) all[i] = first[i];
  for (size_t i = 0; i < B; ++i) all[A + i] = second[i];
  return all;
}

// clang-format off
inline constexpr PropertyRow kBackColorRow   {ole::stock::kBackColor,    "BackColor",    ole::kColor, ole::kRepaint};
inline constexpr PropertyRow kBorderStyleRow {ole::stock::kBorderStyle,  "BorderStyle",  ole::Enum(kEnumBorderStyle), ole::kRepaint};
inline constexpr PropertyRow kFontRow        {ole::stock::kFont,         "Font",         ole::kFont, ole::kRepaint};
inline constexpr PropertyRow kForeColorRow   {ole::stock::kForeColor,    "ForeColor",    ole::kColor, ole::kRepaint};
inline constexpr PropertyRow kEnabledRow     {ole::stock::kEnabled,      "Enabled",      ole::kBool, ole::kRepaint};
inline constexpr PropertyRow kHwndRow        {ole::stock::kHwnd,         "HWND",         ole::kHandle, ole::kReadOnly | ole::kHidden};
inline constexpr PropertyRow kTabStopRow     {ole::stock::kTabStop,      "TabStop",      ole::kBool};
inline constexpr PropertyRow kTextRow        {ole::stock::kText,         "Text",         ole::kText, ole::kRepaint};
inline constexpr PropertyRow kCaptionRow     {ole::stock::kCaption,      "Caption",      ole::kText, ole::kRepaint};
inline constexpr PropertyRow kAppearanceRow  {ole::stock::kAppearance,   "Appearance",   ole::kShort, ole::kRepaint};
inline constexpr PropertyRow kMousePointerRow{ole::stock::kMousePointer, "MousePointer", ole::Enum(kEnumMousePointer)};
inline constexpr PropertyRow kMouseIconRow   {ole::stock::kMouseIcon,    "MouseIcon",    ole::kPicture};
inline constexpr PropertyRow kPictureRow     {ole::stock::kPicture,      "Picture",      ole::kPicture, ole::kRepaint};

inline constexpr ArgumentRow kBtrieveErrorArguments[] = {{"TableName", ole::kText}, {"Status", ole::kShortOut}};
inline constexpr ArgumentRow kLineDataArguments[]  = {{"LineData", ole::kTextOut}};
// clang-format on

inline constexpr std::array kKeyEvents{kKeyDownEvent, kKeyUpEvent, kKeyPressEvent};
inline constexpr std::array kKeyAndMouseEvents{kKeyDownEvent,   kKeyUpEvent,     kKeyPressEvent,
                                               kMouseMoveEvent, kMouseDownEvent, kMouseUpEvent};
// What every control that shows something raises.
inline constexpr std::array kPointerEvents =
    Join(std::array{kClickEvent, kDblClickEvent}, kKeyAndMouseEvents);

// OLEMISC flags: RECOMPOSEONRESIZE, CANTLINKINSIDE, INSIDEOUT, ACTIVATEWHENVISIBLE,
// SETCLIENTSITEFIRST; a button adds ACTSLIKEBUTTON.
inline constexpr uint32_t kControlMiscStatus = 131473;
inline constexpr uint32_t kButtonMiscStatus = 135569;

}  // namespace qrn
