#include "tools/qrndata/export/SqliteShape.h"

#include <algorithm>

#include "tools/qrndata/FieldTypes.h"
#include "tools/qrndata/Text.h"
#include "tools/qrndata/export/TypedValue.h"

namespace qrndata {

namespace {

constexpr uint16_t kLeavesOut = kIndexNullAll | kIndexNullAny;
// Whole numbers of so many digits always fit SQLite's 64 bits.
constexpr int32_t kDigitsOfInteger = 18;

std::string InQuotes(const std::string& name) {
  std::string quoted = "\"";
  for (const char c : name) quoted.append(c == '"' ? 2 : 1, c);
  return quoted + '"';
}

std::string DecimalType(const qrn::DbFieldInfo& field) {
  const int32_t places = DecimalPlaces(field);
  if (field.Decimals == 0 && places <= kDigitsOfInteger) return " INTEGER";
  if (places > kDigitsOfDouble) return "";
  return " DECIMAL(" + std::to_string(places) + "," + std::to_string(field.Decimals) + ")";
}

std::string TypeOf(const qrn::DbFieldInfo& field) {
  const FieldTypeRow* type = FindFieldType(field.Type);
  switch (type == nullptr ? Family::Text : type->family) {
    case Family::Whole:
    case Family::Logical:
      return " INTEGER";
    case Family::Real:
      return " REAL";
    case Family::Digits:
      return DecimalType(field);
    default:
      return " TEXT";
  }
}

class Shaper {
 public:
  Shaper(const ExportedTable& table, SqlNames& names)
      : table_(table.table), names_(names), name_(names.Take(Show(table_.name))) {
    SqlNames columns;
    for (const std::string& name : table.names) columns_.push_back(columns.Take(name));
  }

  SqlShape Run() {
    const Key* primary = PrimaryKey();
    SqlShape shape{"CREATE TABLE " + name_ + "(", "INSERT INTO " + name_ + " VALUES(", {}};
    for (size_t slot = 0; slot < columns_.size(); ++slot) {
      const char* comma = slot == 0 ? "" : ", ";
      shape.create += comma + columns_[slot] + TypeOf(table_.fields[slot]);
      shape.insert += slot == 0 ? "?" : ", ?";
    }
    if (primary != nullptr) shape.create += ", PRIMARY KEY" + Columns(*primary, false);
    shape.create += ")";
    shape.insert += ")";
    for (const Key& key : table_.keys) {
      if (&key != primary) shape.indexes.push_back(IndexOf(key));
    }
    return shape;
  }

 private:
  size_t SlotOf(const Segment& segment) const {
    return static_cast<size_t>(FindField(table_, segment.fieldId) - table_.fields.data());
  }

  bool IsPrimary(const Key& key) const {
    return !key.AllowsDuplicates() &&
           std::ranges::none_of(key.segments, [&](const Segment& segment) {
             return (segment.flags & kLeavesOut) != 0 || IsNullable(table_.fields[SlotOf(segment)]);
           });
  }

  const Key* PrimaryKey() const {
    const auto found =
        std::ranges::find_if(table_.keys, [&](const Key& key) { return IsPrimary(key); });
    return found == table_.keys.end() ? nullptr : &*found;
  }

  std::string Columns(const Key& key, bool isOrdered) const {
    std::string list = "(";
    for (const Segment& segment : key.segments) {
      if (list.size() > 1) list += ", ";
      list += columns_[SlotOf(segment)];
      if (isOrdered && (segment.flags & kIndexCaseInsensitive) != 0) list += " COLLATE NOCASE";
      if (isOrdered && (segment.flags & kIndexDescending) != 0) list += " DESC";
    }
    return list + ")";
  }

  SqlIndex IndexOf(const Key& key) {
    const auto number = std::to_string(&key - table_.keys.data());
    const std::string shown = key.name.empty() ? "key" + number : Show(key.name);
    const std::string name = names_.Take(Show(table_.name) + "_" + shown);
    return {name + " ON " + name_ + Columns(key, true), shown, !key.AllowsDuplicates()};
  }

  const Table& table_;
  SqlNames& names_;
  std::string name_;
  std::vector<std::string> columns_;
};

}  // namespace

std::string SqlNames::Take(const std::string& name) {
  const bool isReserved = Lowered(name).starts_with("sqlite_");
  const std::string wanted = isReserved ? "_" + name : name;
  std::string given = wanted;
  for (int number = 2; !taken_.insert(Lowered(given)).second; ++number) {
    given = wanted + "_" + std::to_string(number);
  }
  return InQuotes(given);
}

SqlShape ShapeOf(const ExportedTable& table, SqlNames& names) { return Shaper(table, names).Run(); }

}  // namespace qrndata
