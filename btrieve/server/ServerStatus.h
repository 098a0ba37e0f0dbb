// A server's refusals as statuses.
#pragma once

#include <string_view>

#include "btrieve/system/Status.h"

namespace btrieve::server {

// `state` is the five characters that SQL gives a refusal.
Status StatusOfState(std::string_view state) noexcept;
// Of a refused connection, about which the client library has only words, in whatever language, but
// with the state among them. 20 where no server has said anything, or nothing else fits.
Status StatusOfRefusal(std::string_view message) noexcept;

}  // namespace btrieve::server
