#include "host/designer/document/DocumentReader.h"

#include <algorithm>
#include <iterator>

#include "host/form/PropertyLine.h"
#include "host/form/SourceText.h"

namespace qrn::designer {
namespace {

using form::IsName;
using form::OnlyComment;
using form::SameWord;
using form::Trimmed;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr char kEndOfText = '\x1A';
// Far beyond any form; keeps a damaged file from exhausting the stack.
constexpr int kDeepest = 32;

constexpr const char* kRoots[] = {"Form", "MDIForm", "UserControl", "UserDocument", "PropertyPage"};

std::string_view TakeWord(std::string_view* text) {
  *text = Trimmed(*text);
  const std::string_view word = text->substr(0, text->find_first_of(" \t"));
  text->remove_prefix(word.size());
  return word;
}

bool Starts(std::string_view line, std::string_view word, std::string_view* rest) {
  *rest = WithoutEnd(line);
  return SameWord(TakeWord(rest), word);
}

bool Starts(std::string_view line, std::string_view word) {
  std::string_view rest;
  return Starts(line, word, &rest);
}

bool IsWord(std::string_view line, std::string_view word) {
  std::string_view rest;
  return Starts(line, word, &rest) && OnlyComment(rest);
}

bool IsBlank(std::string_view line) { return Trimmed(WithoutEnd(line)).empty(); }

// What stands before the "=" of a line that sets a property; empty for any other line. Bytes of the
// file will do: no second byte of a character is a quote, "=" or an apostrophe.
std::string_view PropertyNameOf(std::string_view line) {
  line = WithoutEnd(line);
  const size_t equals = line.find_first_of("=\"'");
  if (equals == std::string_view::npos || line[equals] != '=') return {};
  const std::string_view name = Trimmed(line.substr(0, equals));
  return name.find_first_of(" \t") == std::string_view::npos ? name : std::string_view{};
}

std::string_view UsualLineEnd(const std::vector<std::string_view>& lines) {
  if (lines.empty()) return "\r\n";
  const std::string_view end = lines[0].substr(WithoutEnd(lines[0]).size());
  return end.empty() ? "\r\n" : end;
}

}  // namespace

DocumentReader::DocumentReader(std::string_view bytes, form::Mistakes& mistakes)
    : mistakes_(mistakes) {
  text_.isUtf8 = bytes.starts_with(kByteOrderMark);
  mark_ = bytes.substr(0, text_.isUtf8 ? kByteOrderMark.size() : 0);
  bytes.remove_prefix(mark_.size());
  const size_t end = std::min(bytes.find(kEndOfText), bytes.size());
  tail_ = bytes.substr(end);
  lines_ = LinesWithEnds(bytes.substr(0, end));
  text_.lineEnd = UsualLineEnd(lines_);
}

DocumentReader::DocumentReader(std::string_view bytes, FileText text, form::Mistakes& mistakes)
    : text_(std::move(text)), lines_(LinesWithEnds(bytes)), mistakes_(mistakes) {}

bool DocumentReader::Complain(int line, std::string reason) {
  mistakes_.Add(line, std::move(reason));
  return false;
}

void DocumentReader::TakeInto(Block& block, std::string name) {
  block.Append({std::string(Line()), std::move(name), nullptr});
  ++at_;
}

std::unique_ptr<FormDocument> DocumentReader::ReadDocument() {
  auto document = std::make_unique<FormDocument>();
  document->text_ = text_;
  document->mark_ = mark_;
  document->tail_ = tail_;
  if (!ReadVersion(*document->head_)) return nullptr;
  ReadHead(*document->head_);
  const int formLine = LineNumber();
  if (!More()) return Complain(formLine, "'Begin VB.Form Name' is expected"), nullptr;
  document->form_ = ReadControl(0);
  if (!document->form_) return nullptr;
  const Block& form = *document->form_;
  if (std::none_of(std::begin(kRoots), std::end(kRoots),
                   [&](const char* root) { return form.Is("VB", root); })) {
    return Complain(formLine, "a form is expected, not " + form.library() + "." + form.className()),
           nullptr;
  }
  ReadAttributes(*document->attributes_);
  while (More()) TakeInto(*document->code_);
  return document;
}

bool DocumentReader::ReadVersion(Block& head) {
  if (!More() || !Starts(Line(), "VERSION")) {
    return Complain(1, "a form file begins with a line 'VERSION 5.00'");
  }
  TakeInto(head);
  return true;
}

void DocumentReader::ReadHead(Block& head) {
  while (More() && !Starts(Line(), "Begin")) TakeInto(head, text_.Decode(PropertyNameOf(Line())));
}

BlockRef DocumentReader::ReadControl(int depth) {
  std::string_view words;
  Starts(Line(), "Begin", &words);
  const std::string_view type = TakeWord(&words);
  const std::string name = text_.Decode(TakeWord(&words));
  const size_t dot = type.find('.');
  if (dot == std::string_view::npos || !IsName(type.substr(0, dot)) ||
      !IsName(type.substr(dot + 1)) || !IsName(name) || !OnlyComment(words)) {
    return Complain(LineNumber(), "expected is 'Begin Library.Class Name'"), nullptr;
  }
  auto control = std::make_shared<Block>(BlockKind::Control, text_.Decode(type.substr(0, dot)),
                                         text_.Decode(type.substr(dot + 1)));
  TakeInto(*control, name);
  return ReadBody(*control, "End", depth) ? control : nullptr;
}

BlockRef DocumentReader::ReadGroup(int depth) {
  std::string_view words;
  Starts(Line(), "BeginProperty", &words);
  const std::string name = text_.Decode(TakeWord(&words));
  const std::string classId(TakeWord(&words));
  if (name.empty()) {
    return Complain(LineNumber(), "expected is 'BeginProperty Name {class id}'"), nullptr;
  }
  auto group = std::make_shared<Block>(BlockKind::Group, std::string(), classId);
  TakeInto(*group, name);
  return ReadBody(*group, "EndProperty", depth) ? group : nullptr;
}

bool DocumentReader::ReadBody(Block& block, std::string_view endWord, int depth) {
  const int beginLine = LineNumber() - 1;
  if (depth >= kDeepest) return Complain(beginLine, "blocks lie too deep in one another");
  while (More()) {
    if (IsWord(Line(), endWord)) {
      TakeInto(block);
      return true;
    }
    if (IsWord(Line(), "End") || IsWord(Line(), "EndProperty")) break;
    if (!ReadInner(block, depth + 1)) return false;
  }
  return Complain(beginLine,
                  "'" + std::string(endWord) + "' is missing for " + block.items()[0].name);
}

bool DocumentReader::ReadInner(Block& block, int depth) {
  const bool isGroup = Starts(Line(), "BeginProperty");
  if (!isGroup && (block.kind() == BlockKind::Group || !Starts(Line(), "Begin"))) {
    TakeInto(block, text_.Decode(PropertyNameOf(Line())));
    return true;
  }
  BlockRef inner = isGroup ? ReadGroup(depth) : ReadControl(depth);
  if (inner) block.Append({{}, {}, inner});
  return inner != nullptr;
}

// Blank lines between attributes belong to them, those after the last one to the code.
void DocumentReader::ReadAttributes(Block& attributes) {
  size_t end = at_;
  for (size_t line = at_; line < lines_.size(); ++line) {
    if (Starts(lines_[line], "Attribute")) {
      end = line + 1;
    } else if (!IsBlank(lines_[line])) {
      break;
    }
  }
  while (at_ < end) TakeInto(attributes);
}

FormFragment DocumentReader::ReadFragment() {
  FormFragment fragment;
  if (More() && Starts(Line(), "VERSION")) TakeInto(*fragment.head);
  ReadHead(*fragment.head);
  while (More() && Starts(Line(), "Begin")) {
    BlockRef control = ReadControl(1);
    if (!control) return {};
    fragment.controls.push_back(std::move(control));
    while (More() && IsBlank(Line())) ++at_;
  }
  for (; More(); ++at_) fragment.comments.emplace_back(text_.Decode(WithoutEnd(Line())));
  if (fragment.controls.empty()) Complain(0, "there are no controls in the text");
  return fragment;
}

}  // namespace qrn::designer
