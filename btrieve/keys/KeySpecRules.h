// What a specification must keep to, whoever made it: limits of pages, records, keys and types.
#pragma once

#include "btrieve/keys/KeySpec.h"
#include "btrieve/system/Status.h"

namespace btrieve {

// 0, or the status of the first rule broken: 24, 26, 28, then key by key 45, 49, 29, 27, 48, 55.
[[nodiscard]] Status CheckSpec(const FileSpec& file);

}  // namespace btrieve
