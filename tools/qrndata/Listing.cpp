#include "tools/qrndata/Listing.h"

#include <algorithm>

#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Text.h"

namespace qrndata {

size_t DisplayWidth(const std::string& utf8) {
  return ToCodePage(utf8, OnUnmappable::Replace).text.size();
}

Listing::Listing(std::initializer_list<Head> heads) {
  std::vector<std::string> names;
  for (const Head& head : heads) {
    isRight_.push_back(head.isNumber);
    names.push_back(Say(head.name));
  }
  rows_.push_back(std::move(names));
}

void Listing::Add(std::vector<std::string> row) { rows_.push_back(std::move(row)); }

void Listing::Write(std::ostream& out) const {
  std::vector<size_t> widths(isRight_.size());
  for (const auto& row : rows_) {
    for (size_t column = 0; column < row.size(); ++column) {
      widths[column] = std::max(widths[column], DisplayWidth(row[column]));
    }
  }
  for (const auto& row : rows_) {
    std::string line;
    for (size_t column = 0; column < row.size(); ++column) {
      const std::string fill(widths[column] - DisplayWidth(row[column]), ' ');
      line +=
          (column == 0 ? "" : "  ") + (isRight_[column] ? fill + row[column] : row[column] + fill);
    }
    line.erase(line.find_last_not_of(' ') + 1);
    out << line << '\n';
  }
}

}  // namespace qrndata
