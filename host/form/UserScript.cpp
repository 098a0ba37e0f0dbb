#include "host/form/UserScript.h"

#include <algorithm>
#include <optional>

#include "host/form/KeyNames.h"
#include "host/form/MemberPath.h"
#include "host/form/PropertyLine.h"
#include "host/form/SourceText.h"

namespace qrn::form {
namespace {

struct VerbForm {
  UserVerb verb;
  std::string_view form;
};

// Words stand for themselves, <name> or <name:kind> takes a word of that kind (without one the kind
// is the name; of a kind a|b|c any of these words), [...] may be left out.
// clang-format off
constexpr VerbForm kForms[] = {
    {UserVerb::Show,         "show <form>"},
    {UserVerb::Close,        "close [<form>]"},
    {UserVerb::Focus,        "focus <control>"},
    {UserVerb::Click,        "click <control> [at <x:number> <y:number>] [right] [shift] [ctrl]"},
    {UserVerb::DoubleClick,  "dblclick <control> [at <x:number> <y:number>]"},
    {UserVerb::Drag,         "drag <control> from <x:number> <y:number> to <x2:number> <y2:number>"},
    {UserVerb::Move,         "move <control> to <x:number> <y:number>"},
    {UserVerb::Wheel,        "wheel <control> <way:up|down|left|right> [times <times:number>]"},
    {UserVerb::Key,          "key <key> [times <times:number>]"},
    {UserVerb::Type,         "type <text>"},
    {UserVerb::WaitUntil,    "wait until <path> <sign> <value> [within <number>]"},
    {UserVerb::Wait,         "wait <number>"},
    {UserVerb::Expect,       "expect <path> <sign> <value>"},
    {UserVerb::Set,          "set <path> = <value>"},
    {UserVerb::Call,         "call <path>"},
    {UserVerb::Print,        "print <printed>"},
    {UserVerb::Shot,         "shot <file> [of <control>]"},
    {UserVerb::Message,      "message <text> <button:OK|Cancel|Abort|Retry|Ignore|Yes|No>"},
    {UserVerb::DialogPress,  "dialog <title:text> press <button:text>"},
    {UserVerb::DialogChoose, "dialog <title:text> choose <id:number> <text>"},
    {UserVerb::DialogEnter,  "dialog <title:text> enter <id:number> <text>"},
    {UserVerb::DialogExpect, "dialog <title:text> expect <id:number> <sign> <text>"},
    {UserVerb::DialogTab,    "dialog <title:text> tab <text>"},
    {UserVerb::DialogClick,  "dialog <title:text> click <id:number> [<line:text>]"},
    {UserVerb::DialogClick,  "dialog <title:text> click <button:text>"},
    {UserVerb::Menu,         "menu <menu:text> <item:text> [<sub:text>]"},
    {UserVerb::Pace,         "pace <number>"},
    {UserVerb::Pages,        "pages <control>"},
    {UserVerb::Tool,         "tool <class:path> [twice]"},
    {UserVerb::Property,     "property <name:path> [twice]"},
    {UserVerb::Point,        "point <x:number> <y:number> [twice] [right] [shift] [ctrl]"},
    {UserVerb::Draw,         "draw from <x:number> <y:number> to <x2:number> <y2:number> [shift] [ctrl]"},
    {UserVerb::Pull,         "pull <control> <handle:topleft|top|topright|right|bottomright|bottom|bottomleft|left> by <x:number> <y:number>"},
};
// clang-format on

bool IsNumber(std::string_view word) {
  const std::optional<ScriptValue> value = ScriptValueOf(word);
  return value && std::holds_alternative<int32_t>(*value);
}

bool IsText(std::string_view word) {
  std::string text;
  std::string reason;
  return ReadQuoted(&word, &text, &reason) && word.empty();
}
bool IsKey(std::string_view word) { return KeyChordOf(word).has_value(); }
bool IsPath(std::string_view word) { return MemberPathOf(word).has_value(); }
bool IsValue(std::string_view word) { return ScriptValueOf(word).has_value(); }
bool IsSign(std::string_view word) {
  return word == "=" || word == "<>" || SameWord(word, "contains");
}
bool IsPrinted(std::string_view word) { return IsText(word) || IsPath(word); }
bool IsFile(std::string_view word) { return !word.empty(); }

// Whether the word is one of "a|b|c".
bool IsOneOf(std::string_view words, std::string_view word) {
  for (size_t begin = 0; begin < words.size();) {
    const size_t end = std::min(words.find('|', begin), words.size());
    if (SameWord(words.substr(begin, end - begin), word)) return true;
    begin = end + 1;
  }
  return false;
}

struct Kind {
  std::string_view name;
  bool (*fits)(std::string_view);
};

constexpr Kind kKinds[] = {
    {"number", IsNumber}, {"text", IsText},   {"key", IsKey},   {"path", IsPath},
    {"control", IsPath},  {"value", IsValue}, {"sign", IsSign}, {"printed", IsPrinted},
    {"file", IsFile},     {"form", IsPath},
};

bool FitsKind(std::string_view kind, std::string_view word) {
  for (const Kind& row : kKinds) {
    if (row.name == kind) return row.fits(word);
  }
  return IsOneOf(kind, word);
}

// Length of the word at the front: up to a blank outside quotes and parentheses.
size_t WordLength(std::string_view text) {
  bool inText = false;
  int depth = 0;
  for (size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '"') inText = !inText;
    if (inText) continue;
    if (text[at] == '(') ++depth;
    if (text[at] == ')') --depth;
    if ((text[at] == ' ' || text[at] == '\t') && depth <= 0) return at;
  }
  return text.size();
}

std::vector<std::string_view> Words(std::string_view line) {
  std::vector<std::string_view> words;
  for (line = Trimmed(line); !line.empty(); line = Trimmed(line)) {
    const size_t length = WordLength(line);
    words.push_back(line.substr(0, length));
    line.remove_prefix(length);
  }
  return words;
}

// Matches the words of a line against a form.
class Matcher {
 public:
  Matcher(const std::vector<std::string_view>& words, UserStep* step)
      : words_(words), step_(step) {}

  bool Match(std::string_view form) {
    const std::vector<std::string_view> parts = Words(form);
    at_ = 0;
    step_->arguments.clear();
    return MatchFrom(parts, 0) && at_ == words_.size();
  }

 private:
  // Optional parts are tried in order and passed over when their first word does not fit.
  bool MatchFrom(const std::vector<std::string_view>& parts, size_t part) {
    for (; part < parts.size(); ++part) {
      std::string_view piece = parts[part];
      if (!piece.starts_with('[')) {
        if (!TakePart(piece)) return false;
        continue;
      }
      size_t last = part;
      while (!parts[last].ends_with(']')) ++last;
      if (!TakeOptional(parts, part, last)) return false;
      part = last;
    }
    return true;
  }

  bool TakeOptional(const std::vector<std::string_view>& parts, size_t first, size_t last) {
    for (size_t part = first; part <= last; ++part) {
      std::string_view piece = parts[part];
      if (part == first) piece.remove_prefix(1);
      if (part == last) piece.remove_suffix(1);
      if (!TakePart(piece)) return part == first;
    }
    return true;
  }

  bool TakePart(std::string_view piece) {
    if (at_ == words_.size()) return false;
    const std::string_view word = words_[at_];
    if (!piece.starts_with('<')) {
      if (!SameWord(piece, word)) return false;
      step_->arguments[std::string(piece)] = piece;
      return ++at_, true;
    }
    piece = piece.substr(1, piece.size() - 2);
    const size_t colon = piece.find(':');
    const std::string_view name = piece.substr(0, colon);
    const std::string_view kind = colon == std::string_view::npos ? name : piece.substr(colon + 1);
    if (!FitsKind(kind, word)) return false;
    step_->arguments[std::string(name)] = Stored(kind, word);
    return ++at_, true;
  }

  // Texts and files lose their quotes.
  static std::string Stored(std::string_view kind, std::string_view word) {
    std::string text;
    std::string reason;
    std::string_view rest = word;
    const bool unquote = kind == "text" || kind == "file";
    if (unquote && ReadQuoted(&rest, &text, &reason) && rest.empty()) return text;
    return std::string(word);
  }

  const std::vector<std::string_view>& words_;
  UserStep* step_;
  size_t at_ = 0;
};

std::string HowWritten(std::string_view verb) {
  std::string forms;
  for (const VerbForm& row : kForms) {
    if (!SameWord(Words(row.form)[0], verb)) continue;
    forms += (forms.empty() ? "" : "' or '") + std::string(row.form);
  }
  return forms;
}

bool ReadStep(const std::vector<std::string_view>& words, UserStep* step) {
  for (const VerbForm& row : kForms) {
    if (!Matcher(words, step).Match(row.form)) continue;
    step->verb = row.verb;
    return true;
  }
  return false;
}

}  // namespace

const std::string& UserStep::Get(std::string_view name) const {
  static const std::string kNone;
  const auto found = arguments.find(name);
  return found == arguments.end() ? kNone : found->second;
}

int UserStep::Number(std::string_view name) const {
  const std::optional<ScriptValue> value = ScriptValueOf(Get(name));
  const int32_t* number = value ? std::get_if<int32_t>(&*value) : nullptr;
  return number ? *number : 0;
}

std::vector<UserStep> ReadUserScript(const std::vector<std::string>& lines, Mistakes& mistakes) {
  std::vector<UserStep> steps;
  for (size_t i = 0; i < lines.size(); ++i) {
    const std::string_view line = Trimmed(lines[i]);
    if (line.empty() || line[0] == '#') continue;
    const std::vector<std::string_view> words = Words(line);
    UserStep step;
    step.line = static_cast<int>(i) + 1;
    if (ReadStep(words, &step)) {
      steps.push_back(std::move(step));
      continue;
    }
    const std::string forms = HowWritten(words[0]);
    mistakes.Add(step.line, forms.empty() ? "'" + std::string(words[0]) + "' is no step"
                                          : "expected is '" + forms + "'");
  }
  return steps;
}

std::vector<std::string> UserScriptForms() {
  std::vector<std::string> forms;
  for (const VerbForm& row : kForms) forms.emplace_back(row.form);
  return forms;
}

}  // namespace qrn::form
