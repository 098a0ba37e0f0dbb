#include "grid/data/FieldNames.h"

#include <algorithm>

namespace qrn {

// No second byte of a two-byte character is a comma.
std::vector<std::string> FieldNames(std::string_view fields) {
  std::vector<std::string> names;
  if (fields.empty()) return names;
  for (size_t start = 0; start <= fields.size();) {
    const size_t end = std::min(fields.find(',', start), fields.size());
    names.emplace_back(fields.substr(start, end - start));
    start = end + 1;
  }
  return names;
}

}  // namespace qrn
