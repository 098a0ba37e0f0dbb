#include "host/form/VbTokens.h"

#include <algorithm>

#include "host/form/SourceText.h"

namespace qrn::form {
namespace {

constexpr std::string_view kTypeMarks = "%&!#@$";
constexpr std::string_view kPairs[] = {"<=", ">=", "<>", "=<", "=>", "><", ":="};
constexpr std::string_view kSigns = "+-*/\\^&=<>(),.:;!#{}[]?";

char At(std::string_view text, size_t at) { return at < text.size() ? text[at] : '\0'; }

// Takes tokens off one logical line.
class LineReader {
 public:
  LineReader(std::string_view text, int line, Mistakes& mistakes)
      : text_(text), line_(line), mistakes_(mistakes) {}

  Tokens Read() {
    for (SkipBlanks(); at_ < text_.size() && text_[at_] != '\''; SkipBlanks()) {
      TakeToken();
      if (tokens_.back().Is("Rem") && AtStatementStart()) {
        tokens_.pop_back();
        break;
      }
    }
    return std::move(tokens_);
  }

 private:
  void SkipBlanks() {
    space_ = false;
    for (; At(text_, at_) == ' ' || At(text_, at_) == '\t'; ++at_) space_ = true;
  }

  // True if the last token begins a statement; elsewhere Rem may be a member's name.
  bool AtStatementStart() const {
    return tokens_.size() == 1 || tokens_[tokens_.size() - 2].Is(":");
  }

  void TakeToken() {
    const char first = text_[at_];
    if (IsNameStart(first) || first == '_') return TakeWord();
    if (IsDigit(first) || (first == '.' && IsDigit(At(text_, at_ + 1)))) return TakeNumber();
    if (first == '&' &&
        (SameWord(text_.substr(at_ + 1, 1), "H") || SameWord(text_.substr(at_ + 1, 1), "O"))) {
      return TakeBasedNumber();
    }
    if (first == '"') return TakeText();
    if (first == '#' && DateEnd() != std::string_view::npos) return TakeDate();
    TakeSign();
  }

  void Push(TokenKind kind, size_t end) {
    Token token;
    token.kind = kind;
    token.text = text_.substr(at_, end - at_);
    token.spaceBefore = space_;
    at_ = end;
    tokens_.push_back(std::move(token));
  }

  // A type character belongs to the word before it unless a name follows ("rs!Field").
  void TakeTypeMark() {
    const char mark = At(text_, at_);
    if (mark == '\0' || kTypeMarks.find(mark) == std::string_view::npos) return;
    const char next = At(text_, at_ + 1);
    if (IsNamePart(next) || (mark != '$' && next == '"') || (mark == '&' && next == '&')) return;
    tokens_.back().typeMark = mark;
    ++at_;
  }

  void TakeWord() {
    size_t end = at_ + 1;
    while (end < text_.size() && IsNamePart(text_[end])) ++end;
    Push(TokenKind::Word, end);
    TakeTypeMark();
  }

  size_t DigitsEnd(size_t from) const {
    while (IsDigit(At(text_, from))) ++from;
    return from;
  }

  void TakeNumber() {
    size_t end = DigitsEnd(at_);
    if (At(text_, end) == '.') end = DigitsEnd(end + 1);
    if (SameWord(text_.substr(end, 1), "E") || SameWord(text_.substr(end, 1), "D")) {
      size_t digits = end + 1;
      if (At(text_, digits) == '+' || At(text_, digits) == '-') ++digits;
      if (IsDigit(At(text_, digits))) end = DigitsEnd(digits);
    }
    Push(TokenKind::Number, end);
    std::replace_if(
        tokens_.back().text.begin(), tokens_.back().text.end(),
        [](char byte) { return byte == 'd' || byte == 'D'; }, 'E');
    TakeTypeMark();
  }

  void TakeBasedNumber() {
    size_t end = at_ + 2;
    while (end < text_.size() && std::isxdigit(static_cast<unsigned char>(text_[end]))) ++end;
    if (end == at_ + 2) return TakeSign();
    Push(TokenKind::Number, end);
    if (At(text_, at_) != '&') return;
    // Kept: &HFFFF is -1 and &HFFFF& is 65535.
    tokens_.back().text += '&';
    ++at_;
  }

  void TakeText() {
    size_t end = at_ + 1;
    for (; end < text_.size(); ++end) {
      if (text_[end] != '"') continue;
      if (At(text_, end + 1) != '"') break;
      ++end;
    }
    if (end < text_.size()) return Push(TokenKind::Text, end + 1);
    mistakes_.Add(line_, "the closing quote of a text is missing");
    Push(TokenKind::Text, text_.size());
    tokens_.back().text += '"';
  }

  // Where the date that begins here ends (past its second #), npos if this # begins no date.
  size_t DateEnd() const {
    const size_t end = text_.find('#', at_ + 1);
    if (end == std::string_view::npos) return end;
    const std::string_view inside = text_.substr(at_ + 1, end - at_ - 1);
    const bool fits = std::all_of(inside.begin(), inside.end(), [](char byte) {
      return IsNamePart(byte) || byte == '/' || byte == ':' || byte == ' ' || byte == '-' ||
             byte == ',';
    });
    return fits && inside.find_first_of("/:-") != std::string_view::npos ? end + 1
                                                                         : std::string_view::npos;
  }

  void TakeDate() { Push(TokenKind::Date, DateEnd()); }

  void TakeSign() {
    for (const std::string_view pair : kPairs) {
      if (text_.substr(at_).starts_with(pair)) return Push(TokenKind::Sign, at_ + 2);
    }
    if (kSigns.find(text_[at_]) == std::string_view::npos) {
      mistakes_.Add(line_, std::string("the character '") + text_[at_] + "' has no meaning here");
    }
    Push(TokenKind::Sign, at_ + 1);
  }

  std::string_view text_;
  int line_;
  Mistakes& mistakes_;
  size_t at_ = 0;
  bool space_ = false;
  Tokens tokens_;
};

// True if the line ends with a blank and an underscore outside texts and comments.
bool Continues(std::string_view line) {
  const size_t last = line.find_last_not_of(" \t");
  if (last == std::string_view::npos || line[last] != '_') return false;
  if (last > 0 && line[last - 1] != ' ' && line[last - 1] != '\t') return false;
  bool inText = false;
  for (const char byte : line.substr(0, last)) {
    if (byte == '"') inText = !inText;
    if (byte == '\'' && !inText) return false;
  }
  return !inText;
}

}  // namespace

bool Token::Is(std::string_view word) const noexcept {
  return (kind == TokenKind::Word || kind == TokenKind::Sign) && SameWord(text, word);
}

std::vector<LogicalLine> ReadCodeLines(const std::vector<std::string>& lines, int firstLine,
                                       Mistakes& mistakes) {
  std::vector<LogicalLine> result;
  for (size_t at = 0; at < lines.size();) {
    LogicalLine logical;
    logical.line = firstLine + static_cast<int>(at);
    std::string text = lines[at];
    size_t next = at + 1;
    for (; Continues(text) && next < lines.size(); ++next) {
      text.erase(text.find_last_of('_'));
      text += lines[next];
    }
    logical.lineCount = static_cast<int>(next - at);
    logical.tokens = LineReader(text, logical.line, mistakes).Read();
    result.push_back(std::move(logical));
    at = next;
  }
  return result;
}

std::string Spelled(const Tokens& tokens) { return Spelled(tokens.begin(), tokens.end()); }

std::string Spelled(Tokens::const_iterator begin, Tokens::const_iterator end) {
  std::string text;
  for (auto token = begin; token != end; ++token) {
    if (token->spaceBefore && token != begin) text += ' ';
    text += token->text;
  }
  return text;
}

}  // namespace qrn::form
