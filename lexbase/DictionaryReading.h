// One reading of a dictionary directory: the three files, and the order of their rows.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "lexbase.h"
#include "lexbase/DictionaryFile.h"

namespace qrn::lexbase {

class DictionaryReading {
 public:
  // A status as DDFOpen returns it. On failure the object only waits for its end.
  [[nodiscard]] int Open(const std::string& directory);

  // The first non-zero status of the three.
  int Close();

  [[nodiscard]] int ReadFile(std::span<uint8_t> row) { return files_.ReadNext(row); }
  [[nodiscard]] int ReadField(std::span<uint8_t> row);
  [[nodiscard]] int ReadIndex(std::span<uint8_t> row) { return indexes_.ReadNext(row); }

 private:
  using FieldRow = std::array<uint8_t, LexbaseFieldRowSize>;

  [[nodiscard]] int CollectFields();

  DictionaryFile files_, fields_, indexes_;
  // No key of field.ddf gives table and field order together: a column added to an old table has a
  // higher id than all columns of younger tables. So the rows are collected and sorted.
  std::vector<FieldRow> fieldRows_;
  size_t nextField_ = 0;
  bool fieldsAreCollected_ = false;
};

}  // namespace qrn::lexbase
