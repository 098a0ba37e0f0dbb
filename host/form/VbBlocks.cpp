#include "host/form/VbBlocks.h"

namespace qrn::form {
namespace {

struct Block {
  std::string_view opener;
  std::string_view second;  // a second word that opening needs
  std::string_view closer;
  std::string_view closerSecond;
};

// clang-format off
constexpr Block kBlocks[] = {
    {"Do",       "",     "Loop", ""},
    {"While",    "",     "Wend", ""},
    {"Select",   "Case", "End",  "Select"},
    {"With",     "",     "End",  "With"},
    {"Enum",     "",     "End",  "Enum"},
    {"Sub",      "",     "End",  "Sub"},
    {"Function", "",     "End",  "Function"},
    {"If",       "",     "End",  "If"},
};
// clang-format on

bool Matches(const Statement& statement, std::string_view first, std::string_view second) {
  return second.empty() ? statement.Starts(first) : statement.Starts(first, second);
}

std::string CloserOf(std::string_view opener) {
  for (const Block& block : kBlocks) {
    if (block.opener != opener) continue;
    std::string closer(block.closer);
    if (!block.closerSecond.empty()) closer += " " + std::string(block.closerSecond);
    return closer;
  }
  return "Next";
}

bool IsModifier(const Token& token) {
  return token.Is("Private") || token.Is("Public") || token.Is("Friend") || token.Is("Static");
}

}  // namespace

std::string_view ProcedureWord(const Statement& statement) noexcept {
  for (const Token& token : statement.tokens) {
    if (token.Is("Sub")) return "Sub";
    if (token.Is("Function")) return "Function";
    if (!IsModifier(token)) break;
  }
  return {};
}

void BlockCheck::Pass(const Statement& statement) {
  if (statement.Starts("If") || statement.Starts("ElseIf") || statement.Starts("Else")) {
    if (statement.inlineIf) return;
    if (!statement.Starts("If")) return Middle("If", "Else", statement.line);
  }
  if (statement.Starts("For")) return open_.push_back({"For", statement.line});
  if (statement.Starts("Next")) return CloseNext(statement);
  if (statement.Starts("Case")) return Middle("Select", "Case", statement.line);
  const std::string_view procedure = ProcedureWord(statement);
  if (!procedure.empty()) return open_.push_back({procedure, statement.line});
  for (const Block& block : kBlocks) {
    if (Matches(statement, block.closer, block.closerSecond)) {
      return Close(block.opener, CloserOf(block.opener), statement.line);
    }
    if (Matches(statement, block.opener, block.second)) {
      return open_.push_back({block.opener, statement.line});
    }
  }
  if ((statement.Starts("Private") || statement.Starts("Public")) && statement.Has(1, "Enum")) {
    open_.push_back({"Enum", statement.line});
  }
}

void BlockCheck::Middle(std::string_view opener, std::string_view word, int line) {
  if (!open_.empty() && open_.back().opener == opener) return;
  mistakes_.Add(line,
                "'" + std::string(word) + "' stands outside its '" + std::string(opener) + "'");
}

void BlockCheck::Close(std::string_view opener, std::string_view closer, int line) {
  if (open_.empty()) {
    mistakes_.Add(line, "'" + std::string(closer) + "' without '" + std::string(opener) + "'");
    return;
  }
  const Open last = open_.back();
  open_.pop_back();
  if (last.opener == opener) return;
  mistakes_.Add(line, "'" + std::string(closer) + "' stands where '" + CloserOf(last.opener) +
                          "' is expected for the '" + std::string(last.opener) + "' of line " +
                          std::to_string(last.line));
}

// `Next j, i` closes one For a name.
void BlockCheck::CloseNext(const Statement& statement) {
  for (size_t i = 0; i < SplitAtCommas(statement.tokens, 1, statement.tokens.size()).size(); ++i) {
    Close("For", "Next", statement.line);
  }
}

void BlockCheck::Finish() {
  for (const Open& open : open_) {
    mistakes_.Add(open.line, "'" + CloserOf(open.opener) + "' is missing for this '" +
                                 std::string(open.opener) + "'");
  }
  open_.clear();
}

}  // namespace qrn::form
