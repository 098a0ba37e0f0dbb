#include "host/designer/panes/CodeMistakes.h"

#include <algorithm>

#include "host/designer/model/CodeCheck.h"
#include "host/designer/model/CodePart.h"
#include "host/designer/panes/PaneTexts.h"

namespace qrn::designer {

void CodeMistakes::Check(Design& design) {
  const CodePart code(design);
  mistakes_ = CheckCode(design);
  for (form::Mistake& mistake : mistakes_) mistake.line = std::max(code.CodeLine(mistake.line), 0);
}

std::set<int> CodeMistakes::Lines() const {
  std::set<int> lines;
  for (const form::Mistake& mistake : mistakes_) lines.insert(mistake.line);
  return lines;
}

std::optional<int> CodeMistakes::NextBehind(int line) const {
  if (mistakes_.empty()) return std::nullopt;
  const auto behind =
      std::find_if(mistakes_.begin(), mistakes_.end(),
                   [&](const form::Mistake& mistake) { return mistake.line > line; });
  return behind == mistakes_.end() ? mistakes_.front().line : behind->line;
}

const form::Mistake* CodeMistakes::Nearest(int line) const {
  for (const form::Mistake& mistake : mistakes_) {
    if (mistake.line == line) return &mistake;
  }
  return mistakes_.empty() ? nullptr : &mistakes_.front();
}

std::string CodeMistakes::Reason(int line, Language language) const {
  const form::Mistake* mistake = Nearest(line);
  if (!mistake) return {};
  const std::vector<std::string> words{std::to_string(mistake->line + 1), mistake->reason,
                                       std::to_string(mistakes_.size() - 1)};
  return Said(mistakes_.size() == 1 ? PaneText::OneMistake : PaneText::Mistakes, language, words);
}

}  // namespace qrn::designer
