// The code of a form while it is written, and what its writers share. Each writes the procedures of
// one subject.
#pragma once

#include <string>

#include "host/newform/CodeText.h"
#include "host/newform/FormLayout.h"

namespace qrn::newform {

// The record manager's numbers; operation buttons have their own.
inline constexpr int kOpGetEqual = 5, kOpGetFirst = 12, kOpStepFirst = 33;

struct CodeSheet {
  CodeSheet(const FormPlan& from, const FormLayout& laidOut)
      : plan(from), layout(laidOut), words(from.words) {}

  bool HasGrids() const { return plan.choice.detail || plan.HasList(); }
  // The field's name in quotes.
  std::string FieldText(const CardControl& control) const;
  // A call on the table along its order, or without a key.
  std::string Access(int operation) const;

  // Calls `act` with every control of the card that is `wanted`.
  template <class Wanted, class Act>
  void ForEach(Wanted wanted, Act act) const {
    for (const CardControl& control : plan.card) {
      if (wanted(control)) act(control);
    }
  }

  const FormPlan& plan;
  const FormLayout& layout;
  const Words& words;
  CodeText code;
};

std::string Number(size_t number);
// A call of the database control, and the status line's text being put.
std::string DbCall(const std::string& call);
std::string StatusLine(const std::string& words);
// The head of an event's handler.
std::string Handler(const std::string& control, const char* event, const char* parameters);
// The names of columns as an array.
std::string ColumnNames(const Table& table, const std::vector<size_t>& columns);

bool IsBox(const CardControl& control);
bool IsFraction(const CardControl& control);

void WriteHead(CodeSheet& s);
void WriteStart(CodeSheet& s);
void WritePages(CodeSheet& s);
void WriteCourse(CodeSheet& s);
void WriteWalking(CodeSheet& s);
void WriteStoringButtons(CodeSheet& s);  // along a key
void WriteStoring(CodeSheet& s);         // without one
void WriteJudging(CodeSheet& s);
void WriteShowing(CodeSheet& s);
void WriteMoments(CodeSheet& s);
void WriteDetails(CodeSheet& s);
void WriteList(CodeSheet& s);
void WriteGrids(CodeSheet& s);

}  // namespace qrn::newform
