#include "ole/tables/RegistryTokens.h"

namespace qrn::ole {
namespace {

bool IsBlank(char16_t c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n'; }
bool EndsWord(char16_t c) { return IsBlank(c) || c == u'{' || c == u'}' || c == u'='; }

// A class id stands bare, braces and all: {8 hex digits - ...}.
constexpr size_t kClassIdLength = 38;
bool IsClassId(std::u16string_view text) {
  if (text.size() < kClassIdLength || text[0] != u'{' || text[kClassIdLength - 1] != u'}') {
    return false;
  }
  return text.substr(1, kClassIdLength - 2).find_first_of(u" \t\r\n{}") == text.npos;
}

ScriptToken::Kind KindOf(char16_t c) {
  if (c == u'{') return ScriptToken::Kind::Open;
  if (c == u'}') return ScriptToken::Kind::Close;
  if (c == u'=') return ScriptToken::Kind::Equals;
  return c == u'\'' ? ScriptToken::Kind::Quoted : ScriptToken::Kind::Word;
}

}  // namespace

void ScriptTokens::SkipBlanks() {
  for (; at_ < script_.size() && IsBlank(script_[at_]); ++at_) line_ += script_[at_] == u'\n';
}

ScriptToken ScriptTokens::Next() {
  SkipBlanks();
  ScriptToken token{ScriptToken::Kind::End, {}, line_};
  if (at_ == script_.size()) return token;
  token.kind = KindOf(script_[at_]);
  if (IsClassId(script_.substr(at_))) token.kind = ScriptToken::Kind::Word;
  if (token.kind == ScriptToken::Kind::Quoted) {
    token.text = Replaced(Quoted());
  } else if (token.kind == ScriptToken::Kind::Word) {
    token.text = Replaced(Word());
  } else {
    ++at_;
  }
  return token;
}

std::u16string ScriptTokens::Quoted() {
  std::u16string text;
  const int opened = line_;
  for (++at_; at_ < script_.size(); ++at_) {
    if (script_[at_] == u'\'') {
      if (at_ + 1 == script_.size() || script_[at_ + 1] != u'\'') {
        ++at_;
        return text;
      }
      ++at_;
    }
    line_ += script_[at_] == u'\n';
    text += script_[at_];
  }
  throw ScriptError{opened, "a quote is not closed"};
}

std::u16string ScriptTokens::Word() {
  const size_t start = at_;
  if (IsClassId(script_.substr(at_))) at_ += kClassIdLength;
  while (at_ < script_.size() && !EndsWord(script_[at_])) ++at_;
  return std::u16string(script_.substr(start, at_ - start));
}

std::u16string ScriptTokens::Replaced(const std::u16string& raw) const {
  std::u16string text;
  size_t done = 0;
  for (size_t open; (open = raw.find(u'%', done)) != raw.npos;) {
    const size_t close = raw.find(u'%', open + 1);
    if (close == raw.npos) throw ScriptError{line_, "a % is not closed"};
    text.append(raw, done, open - done);
    const auto found =
        replacements_.find(std::u16string_view(raw).substr(open + 1, close - open - 1));
    if (close == open + 1) {
      text += u'%';
    } else if (found == replacements_.end()) {
      throw ScriptError{line_, "a name between % signs stands for nothing"};
    } else {
      text += found->second;
    }
    done = close + 1;
  }
  return text.append(raw, done);
}

}  // namespace qrn::ole
