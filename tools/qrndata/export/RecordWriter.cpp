#include "tools/qrndata/export/RecordWriter.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "fields/Digits.h"
#include "tools/qrndata/FieldTypes.h"
#include "tools/qrndata/Text.h"

namespace qrndata {

namespace {

class CsvWriter : public RecordWriter {
 public:
  CsvWriter(std::ostream& out, const Table& table, std::vector<std::string> names)
      : out_(out), table_(table), names_(std::move(names)) {}

  void Begin() override { Write(TextValues(names_.begin(), names_.end())); }

  std::string Write(const TextValues& values) override {
    line_.clear();
    for (size_t slot = 0; slot < values.size(); ++slot) {
      if (slot != 0) line_ += ',';
      if (values[slot]) line_ += CsvText(*values[slot], IsNullable(table_.fields[slot]));
    }
    // A line without anything would be no row.
    out_ << (line_.empty() ? "\"\"" : line_) << '\n';
    return {};
  }

 private:
  std::ostream& out_;
  const Table& table_;
  std::vector<std::string> names_;
  std::string line_;
};

bool AllDigits(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), &qrn::IsDigit);
}

// As JSON writes numbers: no zeros in front, digits on both sides of a point.
bool IsJsonNumber(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  const size_t point = text.find('.');
  const std::string_view whole = text.substr(0, point);
  if (!AllDigits(whole) || (whole.size() > 1 && whole[0] == '0')) return false;
  return point == std::string_view::npos || AllDigits(text.substr(point + 1));
}

std::string JsonValue(const qrn::DbFieldInfo& field, const std::optional<std::string>& value) {
  if (!value) return "null";
  const FieldTypeRow* type = FindFieldType(field.Type);
  const Family family = type == nullptr ? Family::Text : type->family;
  if (family == Family::Logical && (*value == "0" || *value == "1")) {
    return *value == "1" ? "true" : "false";
  }
  const bool isNumber =
      family == Family::Whole || family == Family::Real || family == Family::Digits;
  return isNumber && IsJsonNumber(*value) ? *value : JsonString(*value);
}

// What stands before, between and behind the objects.
struct JsonFrame {
  const char *begin, *between, *end;
};
constexpr JsonFrame kJsonArray = {"[\n", ",\n", "\n]\n"}, kJsonLines = {"", "\n", "\n"};

class JsonWriter : public RecordWriter {
 public:
  JsonWriter(std::ostream& out, const Table& table, std::vector<std::string> names,
             const JsonFrame& frame)
      : out_(out), table_(table), names_(std::move(names)), frame_(frame) {
    for (std::string& name : names_) name = JsonString(name);
  }

  std::string Write(const TextValues& values) override {
    out_ << (isEmpty_ ? frame_.begin : frame_.between) << '{';
    isEmpty_ = false;
    for (size_t slot = 0; slot < values.size(); ++slot) {
      out_ << (slot == 0 ? "" : ", ") << names_[slot] << ": "
           << JsonValue(table_.fields[slot], values[slot]);
    }
    out_ << '}';
    return {};
  }

  void End() override {
    if (!isEmpty_) {
      out_ << frame_.end;
    } else if (*frame_.begin != '\0') {
      out_ << "[\n]\n";
    }
  }

 private:
  std::ostream& out_;
  const Table& table_;
  std::vector<std::string> names_;
  const JsonFrame& frame_;
  bool isEmpty_ = true;
};

}  // namespace

std::unique_ptr<RecordWriter> MakeCsvWriter(std::ostream& out, const Table& table,
                                            std::vector<std::string> names) {
  return std::make_unique<CsvWriter>(out, table, std::move(names));
}

std::unique_ptr<RecordWriter> MakeJsonWriter(std::ostream& out, const Table& table,
                                             std::vector<std::string> names) {
  return std::make_unique<JsonWriter>(out, table, std::move(names), kJsonArray);
}

std::unique_ptr<RecordWriter> MakeJsonLinesWriter(std::ostream& out, const Table& table,
                                                  std::vector<std::string> names) {
  return std::make_unique<JsonWriter>(out, table, std::move(names), kJsonLines);
}

std::string CsvText(const std::string& text, bool quoteEmpty) {
  const bool hasBlankEnds = !text.empty() && (text.front() == ' ' || text.back() == ' ');
  const bool needsQuotes = (text.empty() && quoteEmpty) || hasBlankEnds ||
                           text.find_first_of(",\"\r\n") != std::string::npos;
  if (!needsQuotes) return text;
  std::string quoted = "\"";
  for (const char c : text) quoted.append(c == '"' ? 2 : 1, c);
  return quoted + '"';
}

}  // namespace qrndata
