// One record of a reply as the line of text that a list shows.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "core/DbTypes.h"
#include "extended/ExFieldText.h"
#include "extended/FieldList.h"
#include "fields/QuorinSettings.h"

namespace qrn {

inline constexpr size_t kLineLength = 1024;  // bytes; a longer row is cut at a character

class ExRow {
 public:
  // Everything given must outlive the object.
  ExRow(const QuorinSettings& settings, const std::vector<ExField>& fields,
        std::string_view delimiter)
      : settings_(settings), fields_(fields), delimiter_(delimiter) {}

  // The texts of the fields in `data`, joined by the delimiter; valid until the next call. `table`
  // is where Blobs look for their values, null for nowhere.
  std::string_view Text(const DbTableInfo* table, std::span<const uint8_t> data);

 private:
  void Append(std::string_view text);

  const QuorinSettings& settings_;
  const std::vector<ExField>& fields_;
  std::string_view delimiter_;
  char line_[kLineLength];
  size_t length_ = 0;
  char field_[kExFieldTextSize];
};

}  // namespace qrn
