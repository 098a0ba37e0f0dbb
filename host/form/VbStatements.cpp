#include "host/form/VbStatements.h"

#include <algorithm>

namespace qrn::form {
namespace {

// Keeps count of parentheses while tokens pass by.
class Depth {
 public:
  void Pass(const Token& token) noexcept {
    if (token.Is("(")) ++depth_;
    if (token.Is(")") && depth_ > 0) --depth_;
  }
  bool Outside() const noexcept { return depth_ == 0; }

 private:
  int depth_ = 0;
};

class LineSplitter {
 public:
  LineSplitter(const LogicalLine& line, size_t order, std::vector<Statement>& out,
               Mistakes& mistakes)
      : line_(line), tokens_(line.tokens), order_(order), out_(out), mistakes_(mistakes) {}

  void Split() {
    while (at_ < tokens_.size()) {
      if (tokens_[at_].Is(":")) {
        ++at_;
      } else if (tokens_[at_].Is("If") || tokens_[at_].Is("ElseIf")) {
        TakeCondition();
      } else if (tokens_[at_].Is("Else")) {
        Push(at_ + 1, " ");
        SkipColon();
      } else {
        TakePlain();
      }
    }
    if (!out_.empty() && out_.back().order == order_) out_.back().joint.clear();
  }

 private:
  void Push(size_t end, std::string joint) {
    Statement statement;
    statement.line = line_.line;
    statement.order = order_;
    statement.tokens = Slice(tokens_, at_, end);
    statement.joint = std::move(joint);
    statement.inlineIf = inlineIf_;
    statement.maybeLabel = at_ == 0 && end == 1 && end < tokens_.size() && tokens_[1].Is(":") &&
                           tokens_[0].kind == TokenKind::Word;
    out_.push_back(std::move(statement));
    at_ = end;
  }

  void SkipColon() {
    if (at_ < tokens_.size() && tokens_[at_].Is(":")) ++at_;
  }

  void TakeCondition() {
    const bool isIf = tokens_[at_].Is("If");
    const size_t then = FindOutside(tokens_, "Then", at_);
    if (then == tokens_.size()) {
      mistakes_.Add(line_.line, "'Then' is missing");
      return Push(then, "");
    }
    if (isIf && then + 1 < tokens_.size()) inlineIf_ = true;
    Push(then + 1, " ");
    SkipColon();
  }

  void TakePlain() {
    const bool isCase = tokens_[at_].Is("Case");
    size_t end = at_;
    for (Depth depth; end < tokens_.size(); ++end) {
      const Token& token = tokens_[end];
      depth.Pass(token);
      if (!depth.Outside()) continue;
      if (token.Is(":")) break;
      const bool member = end > 0 && tokens_[end - 1].Is(".");
      if (!isCase && !member && end > at_ && token.Is("Else")) break;
    }
    const bool colon = end < tokens_.size() && tokens_[end].Is(":");
    Push(end, colon ? ":" : " ");
    SkipColon();
  }

  const LogicalLine& line_;
  const Tokens& tokens_;
  size_t order_;
  std::vector<Statement>& out_;
  Mistakes& mistakes_;
  size_t at_ = 0;
  bool inlineIf_ = false;
};

}  // namespace

bool Statement::Starts(std::string_view first, std::string_view second) const noexcept {
  return Starts(first) && Has(1, second);
}

bool Statement::Has(size_t at, std::string_view word) const noexcept {
  return at < tokens.size() && tokens[at].Is(word);
}

std::vector<Statement> SplitStatements(const std::vector<LogicalLine>& lines, Mistakes& mistakes) {
  std::vector<Statement> statements;
  for (size_t i = 0; i < lines.size(); ++i) {
    LineSplitter(lines[i], i, statements, mistakes).Split();
  }
  return statements;
}

size_t FindOutside(const Tokens& tokens, std::string_view word, size_t from) noexcept {
  Depth depth;
  for (size_t at = from; at < tokens.size(); ++at) {
    if (depth.Outside() && tokens[at].Is(word)) return at;
    depth.Pass(tokens[at]);
  }
  return tokens.size();
}

size_t BehindParenthesis(const Tokens& tokens, size_t open) noexcept {
  Depth depth;
  for (size_t at = open; at < tokens.size(); ++at) {
    depth.Pass(tokens[at]);
    if (depth.Outside()) return at + 1;
  }
  return tokens.size();
}

std::vector<Tokens> SplitAtCommas(const Tokens& tokens, size_t begin, size_t end) {
  const Tokens part = Slice(tokens, begin, end);
  std::vector<Tokens> pieces;
  size_t start = 0;
  for (size_t comma = FindOutside(part, ","); comma < part.size();
       comma = FindOutside(part, ",", start)) {
    pieces.push_back(Slice(part, start, comma));
    start = comma + 1;
  }
  pieces.push_back(Slice(part, start, part.size()));
  return pieces;
}

Tokens Slice(const Tokens& tokens, size_t begin, size_t end) {
  end = std::min(end, tokens.size());
  begin = std::min(begin, end);
  return Tokens(tokens.begin() + static_cast<std::ptrdiff_t>(begin),
                tokens.begin() + static_cast<std::ptrdiff_t>(end));
}

}  // namespace qrn::form
