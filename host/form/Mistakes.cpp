#include "host/form/Mistakes.h"

namespace qrn::form {

void Mistakes::Add(int line, std::string reason) {
  if (list_.size() < kMost) list_.push_back({line, std::move(reason)});
}

std::string Mistakes::Text(const std::string& fileName) const {
  std::string text;
  for (const Mistake& mistake : list_) {
    if (!text.empty()) text += '\n';
    text += fileName + ":";
    if (mistake.line > 0) text += std::to_string(mistake.line) + ":";
    text += " " + mistake.reason;
  }
  return text;
}

}  // namespace qrn::form
