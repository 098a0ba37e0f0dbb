#include "RandomTable.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

#include "platform/CodePage.h"
#include "tests/support/MadeDatabase.h"

namespace qrn::test {
namespace {

constexpr int kRecords = 60;
constexpr int kLargest = 12;

// clang-format off
constexpr FieldKind kKinds[] = {
    {"String",     6, 0, Order::Padded, 0},
    {"LString",    6, 0, Order::Word,   0},
    {"ZString",    6, 0, Order::Word,   0},
    {"Integer",    1, 0, Order::Number, 0},
    {"Integer",    2, 0, Order::Number, -kLargest},
    {"Integer",    4, 0, Order::Number, -kLargest},
    {"Integer",    8, 0, Order::Number, -kLargest},
    {"UBin",       2, 0, Order::Number, 0},
    {"UBin",       4, 0, Order::Number, 0},
    {"Float",      4, 0, Order::Number, -kLargest},
    {"Float",      8, 0, Order::Number, -kLargest},
    {"BFloat",     4, 0, Order::Number, -kLargest},
    {"BFloat",     8, 0, Order::Number, -kLargest},
    {"Decimal",    3, 1, Order::Number, -kLargest},
    {"Money",      4, 2, Order::Number, -kLargest},
    {"Numeric",    5, 1, Order::Number, -kLargest},
    {"NumericSTS", 5, 1, Order::Number, -kLargest},
    {"NumericSA",  5, 1, Order::Number, -kLargest},
    {"Currency",   8, 4, Order::Number, -kLargest},
    {"Date",       4, 0, Order::Word,   0},
    {"Time",       4, 0, Order::Word,   0},
    {"Logical",    1, 0, Order::Number, 0},
};
// clang-format on

constexpr const char* kTexts[] = {"a",  "A",   "ab",  "AB", "aB",  "b c", "",   "表",
                                  "ソ", "能a", "能A", "ポ", "x@y", "a|b", "-1", "z'"};
constexpr const char* kDates[] = {"", "1999/12/31", "2024/01/05", "2024/02/29", "2024/10/01"};
constexpr const char* kTimes[] = {"00:00:00", "00:00:01", "09:30:00", "12:00:00", "23:59:59"};
// Names whose characters end in bytes that mean something in a condition.
constexpr const char* kNames[] = {"Amount", "f1",   "ポソ", "能ァ", "x@y",
                                  "a|b",    "表ー", "ｱ",    "N-1",  "得意先コード"};

template <class Items>
std::string ThrowOne(const Items& items, Dice& dice) {
  return items[static_cast<size_t>(Throw(dice, static_cast<int>(std::size(items))))];
}

bool Is(const FieldKind& kind, std::string_view type) { return kind.type == type; }

bool IsReal(const FieldKind& kind) { return Is(kind, "Float") || Is(kind, "BFloat"); }

std::string NumberText(const FieldKind& kind, int number) {
  char text[32];
  if (IsReal(kind)) {
    std::snprintf(text, sizeof text, "%.1f", number / 2.0);
  } else {
    double value = number;
    for (int i = 0; i < kind.decimals; ++i) value /= 10;
    std::snprintf(text, sizeof text, "%.*f", kind.decimals, value);
  }
  return text;
}

std::string Folded(std::string text) {
  for (char& c : text) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  return text;
}

}  // namespace

int Throw(Dice& dice, int count) { return static_cast<int>(dice() % static_cast<unsigned>(count)); }

int Compare(const FieldKind& kind, const FieldValue& left, const FieldValue& right,
            bool ignoreCase) {
  if (kind.order == Order::Number) return left.number - right.number;
  std::string texts[] = {left.text, right.text};
  const bool hasCase = Is(kind, "String") || Is(kind, "LString") || Is(kind, "ZString");
  for (std::string& text : texts) {
    if (kind.order == Order::Padded) text.resize(static_cast<size_t>(kind.size), ' ');
    if (ignoreCase && hasCase) text = Folded(text);
  }
  return texts[0].compare(texts[1]);  // by bytes without sign
}

FieldValue ThrowValue(const FieldKind& kind, Dice& dice) {
  if (Is(kind, "Date")) return {ThrowOne(kDates, dice)};
  if (Is(kind, "Time")) return {ThrowOne(kTimes, dice)};
  if (kind.order != Order::Number) return {Utf8ToCodePage(ThrowOne(kTexts, dice))};
  const int number =
      Is(kind, "Logical") ? Throw(dice, 2) : kind.least + Throw(dice, kLargest - kind.least + 1);
  return {NumberText(kind, number), number};
}

RandomTable::RandomTable(Dice& dice) {
  ThrowFields(dice);
  WriteSchema(dice);
  MakeDatabase(folder_.Root(), schema_);
  ThrowRecords(dice);
}

// Half of the fields are of a kind that another one has, so that fields can be compared.
void RandomTable::ThrowFields(Dice& dice) {
  static constexpr FieldKind kRowKind = {"Integer", 4, 0, Order::Number, 0};
  fields_.push_back({&kRowKind, "Row", false});
  std::vector<std::string> names(std::begin(kNames), std::end(kNames));
  std::shuffle(names.begin(), names.end(), dice);
  names.resize(4 + static_cast<size_t>(Throw(dice, 6)));
  for (const std::string& name : names) {
    const FieldKind* kind = &kKinds[Throw(dice, static_cast<int>(std::size(kKinds)))];
    if (fields_.size() > 1 && Throw(dice, 2) == 0) kind = fields_.back().kind;
    fields_.push_back({kind, name, Throw(dice, 5) == 0});
  }
}

std::string RandomTable::KeyEntry(Dice& dice) const {
  const auto count = static_cast<int>(fields_.size());
  const RandomField& first = fields_[1 + static_cast<size_t>(Throw(dice, count - 1))];
  const bool isText = first.kind->order == Order::Padded || first.kind->size == 6;
  std::string entry = "  { fields = [{ field = \"" + first.name + "\"";
  if (Throw(dice, 3) == 0) entry += ", descending = true";
  if (isText && Throw(dice, 3) == 0) entry += ", case_insensitive = true";
  entry += Throw(dice, 2) == 0 ? " }]" : " }, \"Row\"]";
  if (Throw(dice, 4) == 0) entry += ", null = \"any\"";
  return entry + ", duplicates = true, modifiable = true },\n";
}

void RandomTable::WriteSchema(Dice& dice) {
  schema_ = "[[table]]\nname = \"T\"\nfield = [\n";
  for (const RandomField& field : fields_) {
    schema_ += "  { name = \"" + field.name + "\", type = \"" + field.kind->type +
               "\", size = " + std::to_string(field.kind->size);
    if (field.kind->decimals != 0)
      schema_ += ", decimals = " + std::to_string(field.kind->decimals);
    schema_ += field.isNullable ? ", nullable = true },\n" : " },\n";
  }
  schema_ += "]\nkey = [\n  { fields = [\"Row\"] },\n" + KeyEntry(dice) + "]\n";
}

void RandomTable::ThrowRecords(Dice& dice) {
  const qrndata::Dictionary dictionary = qrndata::ReadDictionary(folder_.Root());
  qrndata::RowImporter importer(folder_.Root(), dictionary.tables[0], 1000);
  for (int number = 0; number < kRecords; ++number) {
    std::vector<FieldValue> record;
    qrndata::FieldValues texts;
    for (const RandomField& field : fields_) {
      const bool isNull = field.isNullable && Throw(dice, 3) == 0;
      record.push_back(isNull ? FieldValue{{}, 0, true} : ThrowValue(*field.kind, dice));
      if (&field == &fields_.front()) record.back() = {std::to_string(number), number};
      texts.push_back(isNull ? std::nullopt : std::optional(record.back().text));
      // Midnight is what a time without a value is stored as.
      if (isNull && Is(*field.kind, "Time")) record.back().text = "00:00:00";
    }
    if (importer.Put(texts)) std::abort();
    records_.push_back(std::move(record));
  }
  importer.Finish();
}

}  // namespace qrn::test
