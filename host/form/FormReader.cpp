#include "host/form/FormReader.h"

#include <charconv>

#include "host/form/PropertyLine.h"
#include "host/form/SourceText.h"

namespace qrn::form {
namespace {

// Far beyond any form; keeps a damaged file from exhausting the stack.
constexpr int kDeepest = 32;

// Takes the first word off `*text`.
std::string_view TakeWord(std::string_view* text) {
  *text = Trimmed(*text);
  const size_t length = std::min(text->find_first_of(" \t"), text->size());
  const std::string_view word = text->substr(0, length);
  text->remove_prefix(length);
  return word;
}

// True if the line's first word is `word`; `*rest` is what follows.
bool Starts(std::string_view line, std::string_view word, std::string_view* rest) {
  *rest = line;
  if (!SameWord(TakeWord(rest), word)) return false;
  *rest = Trimmed(*rest);
  return true;
}

bool IsWord(std::string_view line, std::string_view word) {
  std::string_view rest;
  return Starts(line, word, &rest) && OnlyComment(rest);
}

bool IsGuid(std::string_view text) {
  constexpr std::string_view kShape = "{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}";
  if (text.size() != kShape.size()) return false;
  for (size_t i = 0; i < text.size(); ++i) {
    const bool fits = kShape[i] == 'x' ? std::isxdigit(static_cast<unsigned char>(text[i])) != 0
                                       : kShape[i] == text[i];
    if (!fits) return false;
  }
  return true;
}

bool TakeNumber(std::string_view* text, int base, int* number) {
  const auto [end, error] =
      std::from_chars(text->data(), text->data() + text->size(), *number, base);
  if (error != std::errc() || *number < 0) return false;
  text->remove_prefix(static_cast<size_t>(end - text->data()));
  return true;
}

// "{id}#1.0#0": library id, version (hexadecimal, as type libraries are registered), language.
bool ReadLibraryId(std::string_view text, LibraryReference* library) {
  const size_t hash = std::min(text.find('#'), text.size());
  library->typeLibrary = text.substr(0, hash);
  text.remove_prefix(hash);
  int language = 0;
  return IsGuid(library->typeLibrary) && TakeSign(&text, '#') &&
         TakeNumber(&text, 16, &library->major) && TakeSign(&text, '.') &&
         TakeNumber(&text, 16, &library->minor) && TakeSign(&text, '#') &&
         TakeNumber(&text, 16, &language) && text.empty();
}

}  // namespace

FormReader::FormReader(std::vector<std::string> lines, Mistakes& mistakes)
    : lines_(std::move(lines)), mistakes_(mistakes) {}

FormFile FormReader::Read() {
  if (!ReadVersion()) return file_;
  ReadObjects();
  if (!ReadForm()) return file_;
  ReadAttributes();
  ReadCode();
  return file_;
}

bool FormReader::ReadVersion() {
  std::string_view rest;
  if (!More() || !Starts(Line(), "VERSION", &rest)) {
    mistakes_.Add(1, "a form file begins with a line 'VERSION 5.00'");
    return false;
  }
  if (rest != "5.00") {
    Complain("only 'VERSION 5.00' of a form is known, not '" + std::string(rest) + "'");
    return false;
  }
  ++at_;
  return true;
}

void FormReader::ReadObjects() {
  std::string_view rest;
  for (; More(); ++at_) {
    if (Starts(Line(), "Object", &rest)) {
      ReadObject(rest);
    } else if (!Trimmed(Line()).empty()) {
      return;
    }
  }
}

void FormReader::ReadObject(std::string_view rest) {
  LibraryReference library;
  library.line = LineNumber();
  std::string id;
  std::string reason;
  bool read = TakeSign(&rest, '=');
  rest = Trimmed(rest);
  read = read && ReadQuoted(&rest, &id, &reason) && ReadLibraryId(id, &library);
  rest = Trimmed(rest);
  read = read && TakeSign(&rest, ';');
  rest = Trimmed(rest);
  read = read && ReadQuoted(&rest, &library.fileName, &reason) && OnlyComment(rest);
  if (!read) return Complain("Object: expected is \"{library id}#1.0#0\"; \"module.ocx\"");
  file_.libraries.push_back(std::move(library));
}

bool FormReader::ReadForm() {
  std::string_view rest;
  if (!More() || !Starts(Line(), "Begin", &rest)) {
    mistakes_.Add(LineNumber(), "'Begin VB.Form Name' is expected");
    return false;
  }
  if (!ReadBegin(rest, &file_.form)) return false;
  if (!file_.form.Is("VB", "Form")) {
    Complain("only VB.Form is a form here, not " + file_.form.library + "." + file_.form.className);
    return false;
  }
  ++at_;
  ReadBody(&file_.form, 1);
  return true;
}

bool FormReader::ReadBegin(std::string_view words, ControlNode* control) {
  const std::string_view type = TakeWord(&words);
  const std::string_view name = TakeWord(&words);
  const size_t dot = type.find('.');
  control->line = LineNumber();
  if (dot == std::string_view::npos || !IsName(type.substr(0, dot)) ||
      !IsName(type.substr(dot + 1)) || !IsName(name) || !OnlyComment(words)) {
    Complain("expected is 'Begin Library.Class Name'");
    return false;
  }
  control->library = type.substr(0, dot);
  control->className = type.substr(dot + 1);
  control->name = name;
  return true;
}

void FormReader::ReadBody(ControlNode* control, int depth) {
  std::string_view rest;
  for (; More(); ++at_) {
    if (Trimmed(Line()).empty()) continue;
    if (IsWord(Line(), "End")) {
      ++at_;
      return TakeIndex(control);
    }
    if (Starts(Line(), "BeginProperty", &rest)) {
      ReadGroup(rest, &control->properties, depth + 1);
    } else if (Starts(Line(), "Begin", &rest)) {
      ReadChild(rest, control, depth + 1);
    } else {
      ReadProperty(&control->properties);
    }
  }
  mistakes_.Add(control->line, "'End' is missing for " + control->name);
}

// Leaves `at_` on the child's last line, as the loop above expects.
void FormReader::ReadChild(std::string_view words, ControlNode* parent, int depth) {
  ControlNode child;
  if (depth > kDeepest) {
    Complain("controls lie too deep in one another");
    at_ = lines_.size();
    return;
  }
  const bool known = ReadBegin(words, &child);
  ++at_;
  ReadBody(&child, depth);
  if (known) parent->children.push_back(std::move(child));
  --at_;
}

void FormReader::ReadGroup(std::string_view words, std::vector<Property>* into, int depth) {
  Property group;
  ReadGroupHead(words, &group);
  if (depth > kDeepest) Complain("groups lie too deep in one another");
  const bool tooDeep = depth > kDeepest;
  for (++at_; More() && !tooDeep; ++at_) {
    std::string_view rest;
    if (Trimmed(Line()).empty()) continue;
    if (IsWord(Line(), "EndProperty")) {
      into->push_back(std::move(group));
      return;
    }
    if (IsWord(Line(), "End")) {
      --at_;  // belongs to the control
      return mistakes_.Add(group.line, "'EndProperty' is missing for " + group.name);
    }
    if (Starts(Line(), "BeginProperty", &rest)) {
      ReadGroup(rest, &group.group, depth + 1);
    } else {
      ReadProperty(&group.group);
    }
  }
  if (!tooDeep) mistakes_.Add(group.line, "'EndProperty' is missing for " + group.name);
  at_ = lines_.size();
}

void FormReader::ReadGroupHead(std::string_view words, Property* group) {
  group->line = LineNumber();
  group->isGroup = true;
  group->name = TakeWord(&words);
  group->groupClass = TakeWord(&words);
  const bool classFits = group->groupClass.empty() || IsGuid(group->groupClass);
  if (group->name.empty() || !classFits || !OnlyComment(words)) {
    Complain("expected is 'BeginProperty Name {class id}'");
  }
}

void FormReader::ReadProperty(std::vector<Property>* into) {
  Property property;
  std::string reason;
  property.line = LineNumber();
  if (!ReadPropertyLine(Trimmed(Line()), &property, &reason)) return Complain(std::move(reason));
  into->push_back(std::move(property));
}

void FormReader::TakeIndex(ControlNode* control) {
  const Property* index = control->Find("Index");
  if (!index) return;
  const int32_t* number = std::get_if<int32_t>(&index->value);
  if (number && *number >= 0 && *number <= 32767) {
    control->index = *number;
  } else {
    mistakes_.Add(index->line, "Index: a whole number from 0 to 32767 is expected");
  }
}

void FormReader::ReadAttributes() {
  std::string_view rest;
  for (; More(); ++at_) {
    if (Trimmed(Line()).empty()) continue;
    if (!Starts(Line(), "Attribute", &rest)) return;
    Property attribute;
    std::string reason;
    attribute.line = LineNumber();
    // True and False stand bare here.
    if (rest.ends_with("True") || rest.ends_with("False")) continue;
    if (!ReadPropertyLine(rest, &attribute, &reason)) {
      Complain(std::move(reason));
    } else {
      file_.attributes.push_back(std::move(attribute));
    }
  }
}

void FormReader::ReadCode() {
  file_.codeLine = LineNumber();
  file_.code.assign(lines_.begin() + static_cast<std::ptrdiff_t>(std::min(at_, lines_.size())),
                    lines_.end());
}

}  // namespace qrn::form
