// What the list controls share: arguments of their methods and events, and the size of a combo box.
#pragma once

#include "binding/tables/StockMembers.h"

namespace qrn {

// Hosts that do not name a size give a combo box the service's default.
inline constexpr int32_t kDefaultWidthPx = 128;
inline constexpr int32_t kDefaultHeightPx = 32;

namespace list {

inline constexpr ArgumentRow kIndex[] = {{"Index", ole::kLong}};

// clang-format off
inline constexpr std::array kComboEvents = Join(kPointerEvents, std::array{
    EventRow{1, "BtrieveError", kBtrieveErrorArguments},
    EventRow{2, "Change"},
    EventRow{3, "Scroll"},
    EventRow{4, "Format", kLineDataArguments},
});
inline constexpr std::array kListEvents = Join(kPointerEvents, std::array{
    EventRow{1, "BtrieveError", kBtrieveErrorArguments},
    EventRow{2, "Scroll"},
    EventRow{3, "Format", kLineDataArguments},
});
// clang-format on

}  // namespace list

}  // namespace qrn
