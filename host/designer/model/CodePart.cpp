#include "host/designer/model/CodePart.h"

#include <algorithm>

#include "host/form/SourceText.h"
#include "host/form/VbTokens.h"

namespace qrn::designer {
namespace {

using form::LogicalLine;
using form::SameWord;
using form::Token;

constexpr char kFormObject[] = "Form";
constexpr const char* kProcedureWords[] = {"Sub", "Function", "Property"};
constexpr const char* kScopeWords[] = {"Private", "Public", "Friend", "Static"};

template <size_t N>
bool IsOneOf(const Token& token, const char* const (&words)[N]) {
  return std::any_of(std::begin(words), std::end(words),
                     [&](const char* word) { return token.Is(word); });
}

// Where the procedure's name stands in its first line; 0 if the line begins none.
size_t NamePlace(const form::Tokens& tokens) {
  size_t at = 0;
  while (at < tokens.size() && IsOneOf(tokens[at], kScopeWords)) ++at;
  if (at >= tokens.size() || !IsOneOf(tokens[at], kProcedureWords)) return 0;
  if (tokens[at].Is("Property")) ++at;
  return at + 1 < tokens.size() ? at + 1 : 0;
}

bool EndsProcedure(const form::Tokens& tokens) {
  return tokens.size() > 1 && tokens[0].Is("End") && IsOneOf(tokens[1], kProcedureWords);
}

bool HasEnd(const Item& item) { return item.bytes.ends_with('\n') || item.bytes.ends_with('\r'); }

std::string Parameter(const EventParameter& parameter) {
  return (parameter.byValue ? "ByVal " : "") + parameter.name +
         (parameter.type.empty() ? "" : " As " + parameter.type);
}

using Lines = std::vector<std::string>;

// Lines as the editor has them, each with an LF where it has an end.
Lines LinesOf(std::string_view text) {
  Lines lines;
  for (const std::string_view line : LinesWithEnds(text)) {
    const std::string_view words = WithoutEnd(line);
    lines.emplace_back(words);
    if (words.size() < line.size()) lines.back() += '\n';
  }
  return lines;
}

size_t CommonStart(const Lines& one, const Lines& other) {
  const auto ends = std::mismatch(one.begin(), one.end(), other.begin(), other.end());
  return static_cast<size_t>(ends.first - one.begin());
}

size_t CommonEnd(const Lines& one, const Lines& other, size_t start) {
  const auto count = static_cast<std::ptrdiff_t>(std::min(one.size(), other.size()) - start);
  const auto ends = std::mismatch(one.rbegin(), one.rbegin() + count, other.rbegin());
  return static_cast<size_t>(ends.first - one.rbegin());
}

}  // namespace

std::string CodePart::Text() const {
  const FileText& text = design_.document().text();
  std::string all;
  for (const Item& item : design_.document().code()->items()) {
    all += text.Decode(WithoutEnd(item.bytes));
    if (HasEnd(item)) all += '\n';
  }
  return all;
}

int CodePart::LineCount() const noexcept {
  return static_cast<int>(design_.document().code()->items().size());
}

int CodePart::CodeLine(int fileLine) const noexcept {
  const int line = fileLine - design_.document().CodeLine();
  return line >= 0 && line < LineCount() ? line : -1;
}

Refusal CodePart::Encoded(std::string_view text, std::vector<Item>* lines) const {
  const FileText& file = design_.document().text();
  for (const std::string_view line : LinesWithEnds(text)) {
    const std::string_view words = WithoutEnd(line);
    auto bytes = file.Encode(words);
    const bool holds =
        bytes && bytes->find_first_of(std::string_view("\x1A\0", 2)) == std::string::npos;
    if (!holds) return Message{TextId::NotWritable, {std::string(words)}};
    if (words.size() < line.size()) *bytes += file.lineEnd;
    lines->push_back({std::move(*bytes), {}, nullptr});
  }
  return {};
}

// What is compared is what the editor shows: a line that says the same keeps its bytes, those that
// are no characters and its own end too.
Refusal CodePart::PutText(std::string_view text) {
  const Lines wanted = LinesOf(text);
  const Lines stands = LinesOf(Text());
  const size_t start = CommonStart(stands, wanted);
  const size_t end = CommonEnd(stands, wanted, start);
  if (start + end == stands.size() && start + end == wanted.size()) return {};
  Splice splice{design_.document().code(), start, stands.size() - start - end, {}};
  for (size_t at = start; at < wanted.size() - end; ++at) {
    if (Refusal refusal = Encoded(wanted[at], &splice.items)) return refusal;
  }
  Step step(design_, TextId::ChangeCode, {}, "code");
  Insert(splice.at, {});
  design_.Make(std::move(splice));
  step.Commit();
  return {};
}

// Lines before `at`; one without an end, the file's last until now, gets one.
void CodePart::Insert(size_t at, std::vector<Item> lines) {
  const FormDocument& document = design_.document();
  const auto finish = [&](const BlockRef& block) {
    if (block->items().empty() || HasEnd(block->items().back())) return;
    Item ended = block->items().back();
    if (ended.block) return;
    ended.bytes += document.text().lineEnd;
    Splice splice{block, block->items().size() - 1, 1, {}};
    splice.items.push_back(std::move(ended));
    design_.Make(std::move(splice));
  };
  if (document.code()->items().empty()) {
    finish(document.attributes()->items().empty() ? document.form() : document.attributes());
  } else if (at == document.code()->items().size()) {
    finish(document.code());
  }
  if (!lines.empty()) design_.Make({document.code(), at, 0, std::move(lines)});
}

std::vector<CodeProcedure> CodePart::Procedures() const {
  const FileText& text = design_.document().text();
  std::vector<std::string> lines;
  for (const Item& item : design_.document().code()->items()) {
    lines.push_back(text.Decode(WithoutEnd(item.bytes)));
  }
  form::Mistakes mistakes;
  std::vector<CodeProcedure> procedures;
  bool isOpen = false;
  for (const LogicalLine& line : form::ReadCodeLines(lines, 0, mistakes)) {
    const size_t name = NamePlace(line.tokens);
    if (name != 0) {
      procedures.push_back({line.tokens[name].text, line.line, LineCount() - 1});
      isOpen = true;
    } else if (isOpen && EndsProcedure(line.tokens)) {
      procedures.back().lastLine = line.line;
      isOpen = false;
    }
  }
  return procedures;
}

// The first of the remarks that stand right over a line and belong to it.
int CodePart::AboveRemarks(int line) const {
  const std::vector<Item>& lines = design_.document().code()->items();
  const auto isRemark = [&](int at) {
    return form::Trimmed(lines[static_cast<size_t>(at)].bytes).starts_with('\'');
  };
  while (line > 0 && isRemark(line - 1)) --line;
  return line;
}

ControlId CodePart::IdOf(std::string_view object) const {
  if (SameWord(object, kFormObject)) return design_.form();
  for (const ControlId id : design_.All()) {
    if (SameWord(design_.Name(id), object)) return id;
  }
  return 0;
}

const ClassInfo* CodePart::ClassOf(std::string_view object) const {
  const ControlId id = IdOf(object);
  return id == 0 ? nullptr : design_.Class(id);
}

std::string CodePart::ObjectOf(ControlId id) const {
  return id == design_.form() ? kFormObject : design_.Name(id);
}

std::string CodePart::UsualEvent(ControlId id) const {
  const ClassInfo* info = design_.Class(id);
  return info ? info->usualEvent : std::string();
}

std::vector<std::string> CodePart::Objects() const {
  std::vector<std::string> names{kFormObject};
  for (const ControlId id : design_.All()) names.push_back(design_.Name(id));
  std::stable_sort(names.begin() + 1, names.end(), [](const auto& a, const auto& b) {
    return form::LowerWord(a) < form::LowerWord(b);
  });
  names.erase(std::unique(names.begin(), names.end(),
                          [](const auto& a, const auto& b) { return SameWord(a, b); }),
              names.end());
  return names;
}

std::vector<std::string> CodePart::Events(std::string_view object) const {
  std::vector<std::string> names;
  const ClassInfo* info = ClassOf(object);
  if (!info) return names;
  for (const EventInfo& event : info->events) names.push_back(event.name);
  return names;
}

std::optional<EventPlace> CodePart::HandledBy(std::string_view name) const {
  for (size_t bar = name.find('_'); bar != std::string_view::npos; bar = name.find('_', bar + 1)) {
    const ControlId id = IdOf(name.substr(0, bar));
    const ClassInfo* info = id == 0 ? nullptr : design_.Class(id);
    const EventInfo* event = info ? info->Event(name.substr(bar + 1)) : nullptr;
    if (event) return EventPlace{ObjectOf(id), event->name};
  }
  return std::nullopt;
}

std::string CodePart::ProcedureName(std::string_view object, std::string_view event) {
  return std::string(object) + "_" + std::string(event);
}

int CodePart::Find(std::string_view object, std::string_view event) const {
  const std::string name = ProcedureName(object, event);
  for (const CodeProcedure& procedure : Procedures()) {
    if (SameWord(procedure.name, name)) return procedure.firstLine;
  }
  return -1;
}

std::string CodePart::FirstLine(std::string_view object, std::string_view event) const {
  const ControlId id = IdOf(object);
  const ClassInfo* info = ClassOf(object);
  const EventInfo* known = info ? info->Event(event) : nullptr;
  if (!known) return {};
  const bool isElement = id != design_.form() && design_.Index(id);
  std::string parameters = isElement ? "Index As Integer" : "";
  for (const EventParameter& parameter : known->parameters) {
    if (!parameters.empty()) parameters += ", ";
    parameters += Parameter(parameter);
  }
  return "Private Sub " + ProcedureName(ObjectOf(id), known->name) + "(" + parameters + ")";
}

Refusal CodePart::FindOrMake(std::string_view object, std::string_view event, int* line) {
  const int stands = Find(object, event);
  if (stands >= 0) return *line = stands + 1, Refusal{};
  const std::string first = FirstLine(object, event);
  if (first.empty()) return Message{TextId::NoSuchEvent, {std::string(object), std::string(event)}};
  const std::string name = form::LowerWord(ProcedureName(object, event));
  const std::vector<CodeProcedure> procedures = Procedures();
  const auto later = std::find_if(
      procedures.begin(), procedures.end(),
      [&](const CodeProcedure& procedure) { return form::LowerWord(procedure.name) > name; });
  const bool atEnd = later == procedures.end();
  const auto at = static_cast<size_t>(atEnd ? LineCount() : AboveRemarks(later->firstLine));
  const bool needsSpace = atEnd && at > 0;
  std::vector<Item> lines;
  const std::string text = (needsSpace ? "\n" : "") + first + "\n\nEnd Sub\n" + (atEnd ? "" : "\n");
  if (Refusal refusal = Encoded(text, &lines)) return refusal;
  Step step(design_, TextId::AddProcedure, {ProcedureName(object, event)});
  Insert(at, std::move(lines));
  step.Commit();
  *line = static_cast<int>(at) + (needsSpace ? 2 : 1);
  return {};
}

}  // namespace qrn::designer
