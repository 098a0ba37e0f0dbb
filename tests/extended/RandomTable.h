// Tables of random fields with random records in real files, and what each record holds by the
// test's own book-keeping: the other side of the comparison with the engine.
#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "tests/support/TempFolder.h"

namespace qrn::test {

using Dice = std::mt19937;

// From 0 to `count` - 1.
int Throw(Dice& dice, int count);

// How values of a type stand to each other.
enum class Order {
  Number,
  Padded,  // texts as if blanks stood behind them
  Word,    // texts, the shorter of two that begin alike first
};

struct FieldKind {
  const char* type;
  int size;
  int decimals;  // of decimal types; the reals go by halves
  Order order;
  int least;  // of the numbers that stand in records
};

struct FieldValue {
  std::string text;  // code page 932, empty for a null
  int number = 0;    // the value times ten to the decimals, twice the value of a real
  bool isNull = false;
};

struct RandomField {
  const FieldKind* kind;
  std::string name;  // UTF-8
  bool isNullable;
};

// Below 0, 0, above 0.
int Compare(const FieldKind& kind, const FieldValue& left, const FieldValue& right,
            bool ignoreCase);

FieldValue ThrowValue(const FieldKind& kind, Dice& dice);

class RandomTable : Pinned {
 public:
  // Field 0 holds the record's number, unique by key 0; key 1 has another field in front.
  explicit RandomTable(Dice& dice);

  std::string Directory() const { return folder_.Text(); }
  const std::vector<RandomField>& Fields() const { return fields_; }
  const std::vector<FieldValue>& Record(int number) const {
    return records_[static_cast<size_t>(number)];
  }
  const std::string& Schema() const { return schema_; }

 private:
  void ThrowFields(Dice& dice);
  void WriteSchema(Dice& dice);
  std::string KeyEntry(Dice& dice) const;
  void ThrowRecords(Dice& dice);

  TempFolder folder_;
  std::vector<RandomField> fields_;
  std::vector<std::vector<FieldValue>> records_;
  std::string schema_;
};

}  // namespace qrn::test
