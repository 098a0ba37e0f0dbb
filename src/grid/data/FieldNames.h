#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qrn {

// What stands between the commas of `DbListFields`, as it stands; none in an empty text.
std::vector<std::string> FieldNames(std::string_view fields);

}  // namespace qrn
