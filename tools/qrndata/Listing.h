// A table of texts with aligned columns, for a fixed-width font.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace qrndata {

class Listing {
 public:
  // Cells are UTF-8. Numbers are aligned right: a column whose head begins with '>' (taken off).
  explicit Listing(std::vector<std::string> heads);

  void Add(std::vector<std::string> row);
  void Write(std::ostream& out) const;

 private:
  std::vector<bool> isRight_;
  std::vector<std::vector<std::string>> rows_;  // the heads first
};

// Columns that the text takes: two for a character of two bytes in code page 932.
size_t DisplayWidth(const std::string& utf8);

}  // namespace qrndata
