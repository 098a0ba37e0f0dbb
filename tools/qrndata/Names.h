// Names as users write them: of tables, fields and keys.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qrndata {

// Code page 932, as the dictionary has them.
using Names = std::vector<std::string>;

// The name that `wanted` (UTF-8) is; without one, the first that is the same but for the case of
// letters A to Z and blanks, if no other name is, too.
std::optional<size_t> FindName(const Names& names, std::string_view wanted);

// "; did you mean "Name"?" where a name is a slip of the hand or two away, else nothing. UTF-8.
std::string DidYouMean(const Names& names, std::string_view wanted);

}  // namespace qrndata
