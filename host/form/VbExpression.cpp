#include "host/form/VbExpression.h"

#include "host/form/SourceText.h"
#include "host/form/VbRefusals.h"

namespace qrn::form {

const char* const kOwnFunctions[] = {"LenB",     "LeftB",     "RightB",    "MidB",
                                     "AscW",     "ChrW",      "Join",      "DateDiff",
                                     "DatePart", "DateValue", "TimeValue", nullptr};

namespace {

bool IsOwnFunction(std::string_view name) {
  for (const char* const* function = kOwnFunctions; *function; ++function) {
    if (SameWord(*function, name)) return true;
  }
  return false;
}

Token Replaced(const Token& token, std::string text) {
  Token other;
  other.kind = TokenKind::Word;
  other.text = std::move(text);
  other.spaceBefore = token.spaceBefore;
  return other;
}

class ExpressionRewriter {
 public:
  ExpressionRewriter(const Tokens& tokens, const Names& names, int line, Mistakes& mistakes)
      : tokens_(tokens), names_(names), line_(line), mistakes_(mistakes) {}

  Tokens Run() {
    while (at_ < tokens_.size()) {
      CheckRefused();
      if (!TakeLowerBound()) out_.push_back(OneToken()), ++at_;
    }
    return std::move(out_);
  }

 private:
  const Token& Now() const { return tokens_[at_]; }
  bool IsMember() const { return at_ > 0 && tokens_[at_ - 1].Is("."); }
  bool Has(size_t at, std::string_view word) const {
    return at < tokens_.size() && tokens_[at].Is(word);
  }

  void CheckRefused() {
    const std::string_view reason = WhyWordRefused(tokens_, at_);
    if (!reason.empty()) mistakes_.Add(line_, std::string(reason));
  }

  Token OneToken() const {
    Token token = Now();
    token.typeMark = 0;
    if (token.kind != TokenKind::Word || IsMember()) return token;
    const auto kept = names_.statics.find(LowerWord(token.text));
    if (kept != names_.statics.end()) return Replaced(token, kept->second);
    if (token.Is("Me")) return Replaced(token, kThisFormName);
    if (names_.locals.Find(token.text) || !IsOwnFunction(token.text)) return token;
    if (names_.survey->names.contains(LowerWord(token.text))) return token;
    return Replaced(token, kOwnPrefix + token.text);
  }

  // LBound(name) and LBound(name, 2) of an array whose bound is written in its declaration.
  bool TakeLowerBound() {
    if (!Now().Is("LBound") || IsMember() || !Has(at_ + 1, "(") || at_ + 3 >= tokens_.size()) {
      return false;
    }
    const Declared* array = names_.Find(tokens_[at_ + 2].text);
    if (!array || array->lowerBounds.empty()) return false;
    size_t dimension = 1;
    size_t close = at_ + 3;
    if (Has(close, ",") && close + 1 < tokens_.size()) {
      dimension = static_cast<size_t>(std::atoi(tokens_[close + 1].text.c_str()));
      close += 2;
    }
    if (!Has(close, ")") || dimension < 1 || dimension > array->lowerBounds.size()) return false;
    out_.push_back(Replaced(Now(), array->lowerBounds[dimension - 1]));
    at_ = close + 1;
    return true;
  }

  const Tokens& tokens_;
  const Names& names_;
  int line_;
  Mistakes& mistakes_;
  size_t at_ = 0;
  Tokens out_;
};

}  // namespace

const Declared* Names::Find(std::string_view name) const {
  if (const Declared* local = locals.Find(name)) return local;
  return survey->module.Find(name);
}

Tokens RewriteExpression(const Tokens& tokens, const Names& names, int line, Mistakes& mistakes) {
  return ExpressionRewriter(tokens, names, line, mistakes).Run();
}

}  // namespace qrn::form
