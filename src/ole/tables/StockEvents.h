// The events of keys and mouse that every control which shows something raises.
#pragma once

#include <array>

#include "ole/tables/Members.h"

namespace qrn::ole {

// clang-format off
inline constexpr ArgumentRow kKeyArguments[]      = {{"KeyCode", kShortOut}, {"Shift", kShort}};
inline constexpr ArgumentRow kKeyPressArguments[] = {{"KeyAscii", kShortOut}};
inline constexpr ArgumentRow kMouseArguments[]    = {{"Button", kShort}, {"Shift", kShort}, {"X", kSingle}, {"Y", kSingle}};

inline constexpr EventRow kClickEvent    {stock::kClick,     "Click"};
inline constexpr EventRow kDblClickEvent {stock::kDblClick,  "DblClick"};
inline constexpr EventRow kKeyDownEvent  {stock::kKeyDown,   "KeyDown",   kKeyArguments};
inline constexpr EventRow kKeyUpEvent    {stock::kKeyUp,     "KeyUp",     kKeyArguments};
inline constexpr EventRow kKeyPressEvent {stock::kKeyPress,  "KeyPress",  kKeyPressArguments};
inline constexpr EventRow kMouseMoveEvent{stock::kMouseMove, "MouseMove", kMouseArguments};
inline constexpr EventRow kMouseDownEvent{stock::kMouseDown, "MouseDown", kMouseArguments};
inline constexpr EventRow kMouseUpEvent  {stock::kMouseUp,   "MouseUp",   kMouseArguments};
// clang-format on

inline constexpr std::array kStockEvents{kClickEvent,     kDblClickEvent, kKeyDownEvent,
                                         kKeyUpEvent,     kKeyPressEvent, kMouseMoveEvent,
                                         kMouseDownEvent, kMouseUpEvent};

}  // namespace qrn::ole
