// A dictionary as a form sees it: what its controls can name. Texts are UTF-8.
//
// Controls find tables, fields and keys by their names, the first of a name. What a name does not
// lead to, or what a form file cannot hold, keeps its place in the lists with an empty name: it can
// be shown to nobody, but the numbers of the others stay the dictionary's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace qrn::newform {

struct Field {
  std::string name;
  int32_t type = 0;  // FieldType
  int32_t size = 0;  // bytes
  int32_t decimals = 0;
};

struct Key {
  std::string name;            // as DbIndex takes it
  std::vector<size_t> fields;  // positions in the table's fields, segment by segment
  bool unique = false;
};

struct Table {
  std::string name;
  std::vector<Field> fields;
  std::vector<Key> keys;

  bool HasKeys() const noexcept { return !keys.empty(); }
  // Some field's value runs behind the fixed part of the record.
  bool IsVariable() const noexcept;
  bool IsInKey(size_t field) const noexcept;
};

struct Dictionary {
  std::vector<Table> tables;  // the position is the table's number for the database control

  // Nothing if no table that can be named has that name.
  std::optional<size_t> Find(std::string_view tableName) const noexcept;
};

// There is no readable dictionary. `code` is the dictionary library's, or -1 for memory and for
// more than 256 tables.
struct DictionaryUnreadable : std::runtime_error {
  explicit DictionaryUnreadable(int reason)
      : std::runtime_error("no readable dictionary"), code(reason) {}
  int code;
};

// Reads the dictionary of a folder; data files are not looked at. `directory` is bytes as the
// record manager takes them in a path. Throws DictionaryUnreadable.
Dictionary ReadDictionary(const std::string& directory);

}  // namespace qrn::newform
