#include "RandomCondition.h"

#include <array>

#include "platform/CodePage.h"

namespace qrn::test {
namespace {

struct ComparisonRow {
  const char* sign;
  bool (*holds)(int);
};

constexpr ComparisonRow kComparisons[] = {
    {"=", [](int order) { return order == 0; }}, {"<>", [](int order) { return order != 0; }},
    {"<", [](int order) { return order < 0; }},  {"<=", [](int order) { return order <= 0; }},
    {">", [](int order) { return order > 0; }},  {">=", [](int order) { return order >= 0; }},
};

std::string Blanks(Dice& dice) { return std::string(static_cast<size_t>(1 + Throw(dice, 2)), ' '); }

// By number or by name.
std::string Reference(const RandomTable& table, size_t field, Dice& dice) {
  if (Throw(dice, 2) == 0) return std::to_string(field);
  return Utf8ToCodePage(table.Fields()[field].name);
}

// As a word where it can be one, or between delimiters that it does not hold.
std::string Quoted(const std::string& text, Dice& dice) {
  const bool isPlain = text.find_first_of(" '\"/") == text.npos || text[0] == '1' || text[0] == '2';
  if (isPlain && Throw(dice, 2) == 0) return text;
  std::string marks;
  for (const char mark : {'"', '\'', '/'}) {
    if (text.find(mark) == text.npos) marks += mark;
  }
  const char mark = marks[static_cast<size_t>(Throw(dice, static_cast<int>(marks.size())))];
  return mark + text + mark;
}

}  // namespace

RandomCondition::RandomCondition(const RandomTable& table, Dice& dice)
    : table_(table), ignoresCase_(Throw(dice, 2) == 0) {
  const int count = Throw(dice, 5);
  for (int i = 0; i < count; ++i) {
    terms_.push_back(ThrowTerm(dice));
    terms_.back().connector = i + 1 == count ? '\0' : "&|"[Throw(dice, 2)];
    Write(terms_.back(), dice);
  }
}

RandomCondition::Term RandomCondition::ThrowTerm(Dice& dice) const {
  const auto& fields = table_.Fields();
  const auto field = static_cast<size_t>(Throw(dice, static_cast<int>(fields.size())));
  Term term{field, static_cast<size_t>(Throw(dice, 6)), {}, 0, '\0'};
  const auto second = static_cast<size_t>(Throw(dice, static_cast<int>(fields.size())));
  if (second != 0 && second != field && fields[second].kind == fields[field].kind) {
    term.secondField = second;
    return term;
  }
  // An empty value is none; the others are what the records hold, or near it.
  do {
    term.constant = ThrowValue(*fields[field].kind, dice);
  } while (term.constant.text.empty());
  return term;
}

void RandomCondition::Write(const Term& term, Dice& dice) {
  text_ += "@" + Reference(table_, term.field, dice) + Blanks(dice);
  text_ += kComparisons[term.comparison].sign + Blanks(dice);
  text_ += term.secondField != 0 ? "@" + Reference(table_, term.secondField, dice)
                                 : Quoted(term.constant.text, dice);
  if (term.connector != '\0') text_ += Blanks(dice) + term.connector + Blanks(dice);
}

bool RandomCondition::Holds(const Term& term, const std::vector<FieldValue>& record) const {
  const FieldValue& right = term.secondField != 0 ? record[term.secondField] : term.constant;
  const FieldKind& kind = *table_.Fields()[term.field].kind;
  return kComparisons[term.comparison].holds(
      Compare(kind, record[term.field], right, ignoresCase_));
}

bool RandomCondition::Holds(const std::vector<FieldValue>& record) const {
  for (const Term& term : terms_) {
    const bool holds = Holds(term, record);
    if (term.connector == '\0') return holds;
    if (holds && term.connector == '|') return true;
    if (!holds && term.connector == '&') return false;
  }
  return true;
}

RandomFieldList::RandomFieldList(const RandomTable& table, Dice& dice) : text("Row"), positions{0} {
  for (int i = Throw(dice, 4); i > 0; --i) {
    const auto field = static_cast<size_t>(Throw(dice, static_cast<int>(table.Fields().size())));
    text += "," + Reference(table, field, dice);
    positions.push_back(static_cast<int16_t>(field));
  }
}

}  // namespace qrn::test
