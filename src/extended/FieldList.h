// Field lists: which fields an extended operation brings back, `Code,Name,3`. The text becomes the
// extractor of the request and the plan by which the reply's records are read.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "core/DbEngine.h"
#include "core/DbTypes.h"

namespace qrn {

// One item of the list. The field's description is a copy: a reply stays readable whatever becomes
// of the table.
struct ExField {
  int32_t Number;  // position in the table's `Fields`
  DbFieldInfo Info;
  bool AnswersToItsName;  // no earlier field of the table has the same one
};

// The fields in the text's order; a field may stand there more than once.
struct FieldList {
  std::vector<ExField> Fields;
  std::vector<uint8_t> Extractor;  // 4 bytes a field: u16 length, u16 offset
  uint32_t DataSum = 0;            // bytes that the fields of one record take in the reply
};

// Reads `fields` (code page 932): names and numbers (from 0), separated by commas. Blanks are
// skipped at the very start only; a blank behind an item ends the list, one behind a comma makes
// an empty name, which no field has.
//
// Nothing after a message: VE040 null or empty text, VE818 unknown name, VE025 number too large,
// VE001 without memory.
[[nodiscard]] std::optional<FieldList> ParseFieldList(const DbEngine& engine,
                                                      const DbTableInfo& table, const char* fields);

}  // namespace qrn
