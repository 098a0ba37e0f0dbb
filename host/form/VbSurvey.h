// What must be known of a module before its first statement is rewritten.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "host/form/VbCode.h"
#include "host/form/VbDeclarations.h"
#include "host/form/VbStatements.h"

namespace qrn::form {

struct Survey {
  std::vector<Procedure> procedures;
  Scope module;                   // variables declared outside procedures
  std::set<std::string> names;    // lower case: every procedure, module variable and constant
  std::set<size_t> rangeSelects;  // statements `Select Case` that have a Case with To or Is
  bool optionExplicit = false;
  int optionBase = 0;
};

// Looks through all statements; complains of a procedure that stands twice.
Survey SurveyModule(const std::vector<Statement>& statements, Mistakes& mistakes);

}  // namespace qrn::form
