// Random conditions: the text that the engine compiles, and the test's own judgement of a record.
#pragma once

#include "RandomTable.h"

namespace qrn::test {

class RandomCondition {
 public:
  // None to four terms.
  RandomCondition(const RandomTable& table, Dice& dice);

  const std::string& Text() const { return text_; }  // code page 932
  bool IgnoresCase() const { return ignoresCase_; }

  // Term by term from the left, each of which may decide.
  bool Holds(const std::vector<FieldValue>& record) const;

 private:
  struct Term {
    size_t field, comparison;
    FieldValue constant;
    size_t secondField;  // 0: compares the constant
    char connector;      // '&', '|', or 0 behind the last term
  };

  bool Holds(const Term& term, const std::vector<FieldValue>& record) const;
  Term ThrowTerm(Dice& dice) const;
  void Write(const Term& term, Dice& dice);

  const RandomTable& table_;
  std::vector<Term> terms_;
  std::string text_;
  bool ignoresCase_;
};

// A list of fields, "Row" first, as the engine reads it, and their positions.
struct RandomFieldList {
  RandomFieldList(const RandomTable& table, Dice& dice);

  std::string text;  // code page 932
  std::vector<int16_t> positions;
};

}  // namespace qrn::test
