// A table of texts with aligned columns, for a fixed-width font.
#pragma once

#include <initializer_list>
#include <ostream>
#include <string>
#include <vector>

#include "tools/qrndata/Messages.h"

namespace qrndata {

class Listing {
 public:
  struct Head {
    Message name;
    bool isNumber = false;  // its column is aligned right
  };

  // Cells are UTF-8.
  explicit Listing(std::initializer_list<Head> heads);

  void Add(std::vector<std::string> row);
  void Write(std::ostream& out) const;

 private:
  std::vector<bool> isRight_;
  std::vector<std::vector<std::string>> rows_;  // the heads first
};

// Columns that the text takes: two for a character of two bytes in code page 932.
size_t DisplayWidth(const std::string& utf8);

}  // namespace qrndata
