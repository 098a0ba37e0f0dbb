// What keeps the code from running, by the lines of the code, and how the user is told.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/designer/model/Design.h"
#include "host/form/Mistakes.h"

namespace qrn::designer {

class CodeMistakes {
 public:
  // Looks through the code as it stands.
  void Check(Design& design);

  // Lines count from 0.
  std::set<int> Lines() const;
  // The first with a mistake behind that one, round and round; nothing without any.
  std::optional<int> NextBehind(int line) const;
  // Of the mistake in that line, else of the first; empty without any.
  std::string Reason(int line, Language language) const;

 private:
  const form::Mistake* Nearest(int line) const;

  std::vector<form::Mistake> mistakes_;
};

}  // namespace qrn::designer
