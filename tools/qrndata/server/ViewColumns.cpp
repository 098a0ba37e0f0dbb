#include "tools/qrndata/server/ViewColumns.h"

#include <algorithm>

#include "btrieve/server/ServerLayout.h"
#include "tools/qrndata/FieldTypes.h"
#include "tools/qrndata/Text.h"

namespace qrndata {

namespace {

constexpr size_t kLongestColumn = 63;  // bytes; the server cuts longer ones

// A field's place in the words of a row below: %p place, %w width, %d decimals, %n digits in all.
// $ stands for the schema.
struct ColumnRow {
  int32_t type;
  const char* value;
};
constexpr char kOver[] = "$.btrieve_display(data, %p, %w, %d, 'over')::numeric(%n, %d)";
constexpr char kTrailing[] = "$.btrieve_display(data, %p, %w, %d, 'trailing')::numeric(%n, %d)";
constexpr char kRaised[] = "$.btrieve_display(data, %p, %w, %d, 'raised')::numeric(%n, %d)";
constexpr char kPacked[] = "$.btrieve_packed(data, %p, %w, %d)::numeric(%n, %d)";
constexpr char kSigned[] = "$.btrieve_whole(data, %p, %w, true)";
constexpr char kUnsigned[] = "$.btrieve_whole(data, %p, %w, false)";
// clang-format off
constexpr ColumnRow kColumns[] = {
    {qrn::kString,     "$.btrieve_string(data, %p, %w)"},
    {qrn::kInteger,    kSigned},
    {qrn::kFloat,      "$.btrieve_float(data, %p, %w)"},
    {qrn::kDate,       "$.btrieve_date(data, %p)"},
    {qrn::kTime,       "$.btrieve_time(data, %p)"},
    {qrn::kDecimal,    kPacked},
    {qrn::kMoney,      kPacked},
    {qrn::kLogical,    "$.btrieve_truth(data, %p)"},
    {qrn::kNumeric,    kOver},
    {qrn::kBFloat,     "$.btrieve_bfloat(data, %p, %w)"},
    {qrn::kLString,    "$.btrieve_counted(data, %p, %w)"},
    {qrn::kZString,    "$.btrieve_ended(data, %p, %w, 65535)"},
    {qrn::kNote,       "$.btrieve_ended(data, %p, 1, %w)"},
    {qrn::kLVar,       "$.btrieve_ended(data, %p, 1, %w)"},
    {qrn::kUBin,       kUnsigned},
    {qrn::kAutoInc,    kSigned},
    {qrn::kBit,        "$.btrieve_ended(data, %p, 1, 1)"},
    {qrn::kNumericSTS, kTrailing},
    {qrn::kNumericSA,  kRaised},
    {qrn::kCurrency,   "$.btrieve_money(data, %p, %d)::numeric(%n, %d)"},
    {qrn::kBlob,       "$.btrieve_blob(data, %p)"},
};
// clang-format on
constexpr char kBytes[] = "$.btrieve_bytes(data, %p, %w)";

// What the value fits into: whole numbers and floats, by their size.
struct WidthRow {
  Family family;
  bool isUnsigned;
  int32_t size;
  const char* cast;
};
constexpr WidthRow kWidths[] = {
    {Family::Whole, false, 1, "::smallint"}, {Family::Whole, false, 2, "::smallint"},
    {Family::Whole, false, 4, "::integer"},  {Family::Whole, true, 2, "::integer"},
    {Family::Real, false, 4, "::real"},
};

void ReplaceAll(std::string& text, const std::string& what, const std::string& by) {
  for (size_t at = text.find(what); at != text.npos; at = text.find(what, at + by.size())) {
    text.replace(at, what.size(), by);
  }
}

// A byte alone counts from 0 whatever its type.
std::string CastOf(const FieldTypeRow& type, const qrn::DbFieldInfo& field) {
  const bool isUnsigned = field.Type == qrn::kUBin;
  for (const WidthRow& row : kWidths) {
    if (row.family == type.family && row.isUnsigned == isUnsigned && row.size == field.Size) {
      return row.cast;
    }
  }
  return "";
}

// More decimals than digits leave room for none in front of the point.
int32_t DigitsOf(const FieldTypeRow& type, const qrn::DbFieldInfo& field) {
  constexpr int32_t kCurrencyDigits = 19;
  const int32_t digits =
      field.Type == qrn::kCurrency ? kCurrencyDigits : type.MaxDecimals(field.Size);
  return std::max(digits, field.Decimals);
}

std::string ValueOf(const qrn::DbFieldInfo& field) {
  const FieldTypeRow* type = FindFieldType(field.Type);
  const auto* row = std::ranges::find(kColumns, field.Type, &ColumnRow::type);
  const bool isRead = type != nullptr && row != std::end(kColumns) && type->Takes(field.Size) &&
                      field.Decimals >= 0 && field.Offset >= 0;
  if (!isRead) return kBytes;
  std::string value = row->value + CastOf(*type, field);
  if (field.Type == qrn::kInteger && field.Size == 1) ReplaceAll(value, "true", "false");
  ReplaceAll(value, "%n", std::to_string(std::max(DigitsOf(*type, field), 1)));
  return value;
}

// A byte in front of the value says whether it is null.
std::string ColumnOf(const qrn::DbFieldInfo& field, const std::string& schema) {
  std::string value = ValueOf(field);
  if (IsNullable(field) && field.Offset > 0) {
    value = "CASE WHEN $.btrieve_whole(data, " + std::to_string(field.Offset - 1) +
            ", 1, false) <> 0 THEN NULL ELSE " + value + " END";
  }
  ReplaceAll(value, "%p", std::to_string(std::max(field.Offset, 0)));
  ReplaceAll(value, "%w", std::to_string(std::max(field.Size, 0)));
  ReplaceAll(value, "%d", std::to_string(field.Decimals));
  ReplaceAll(value, "$", btrieve::server::Quoted(schema));
  return value;
}

// Without half a character at its end.
std::string Cut(std::string name, size_t length) {
  if (name.size() <= length) return name;
  while ((name[length] & 0xC0) == 0x80) --length;
  return name.substr(0, length);
}

}  // namespace

std::string ViewNames::Take(const std::string& name) {
  std::string given = Cut(name.empty() ? "_" : name, kLongestColumn);
  for (int number = 2; !taken_.insert(given).second; ++number) {
    const std::string tail = "_" + std::to_string(number);
    given = Cut(name, kLongestColumn - tail.size()) + tail;
  }
  ReplaceAll(given, "\"", "\"\"");
  return "\"" + given + "\"";
}

std::string ViewColumns(const Table& table, const std::string& schema) {
  ViewNames names;
  std::string columns;
  for (const qrn::DbFieldInfo& field : table.fields) {
    columns += (columns.empty() ? "" : ", ") + ColumnOf(field, schema) + " AS " +
               names.Take(Show(field.Name));
  }
  return columns;
}

}  // namespace qrndata
