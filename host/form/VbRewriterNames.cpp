// Rewriting of declarations: variables, constants, enumerations, ReDim.
#include <algorithm>

#include "host/form/SourceText.h"
#include "host/form/VbRefusals.h"
#include "host/form/VbRewriter.h"

namespace qrn::form {
namespace {

// The engine takes only plain values as bounds in Dim and as constants.
bool IsPlainNumber(const Tokens& tokens) {
  return tokens.size() == 1 && tokens[0].kind == TokenKind::Number;
}

bool IsPlainValue(const Tokens& tokens) {
  const size_t at = !tokens.empty() && tokens[0].Is("-") ? 1 : 0;
  if (tokens.size() != at + 1) return false;
  const Token& value = tokens[at];
  if (value.kind == TokenKind::Number) return true;
  return at == 0 && (value.kind == TokenKind::Text || value.kind == TokenKind::Date ||
                     value.Is("True") || value.Is("False"));
}

bool HasPlainBounds(const Declared& declared) {
  return std::all_of(declared.bounds.begin(), declared.bounds.end(),
                     [](const ArrayBound& bound) { return IsPlainNumber(bound.upper); });
}

std::string InitialStatement(const std::string& name, const VbType& type) {
  const bool isObject = type.conversion.empty();
  return (isObject ? "Set " : "") + name + " = " + std::string(type.initial);
}

}  // namespace

std::string VbRewriter::OnNothing(const Statement&) { return ""; }

std::string VbRewriter::OnOption(const Statement& statement) {
  if (statement.Has(1, "Compare") && !statement.Has(2, "Binary")) {
    Refuse(statement.line,
           "texts are compared as they are: use LCase, or StrComp with vbTextCompare");
  }
  return "";
}

std::string VbRewriter::OnVariables(const Statement& statement) {
  if (statement.Has(1, "WithEvents")) {
    Refuse(statement.line, "WithEvents cannot be had: only the form's controls have events here");
    return "";
  }
  const bool isStatic = statement.Starts("Static");
  if (isStatic && !procedure_) {
    Refuse(statement.line, "Static stands only in a procedure");
    return "";
  }
  return Variables(statement, 1, isStatic);
}

std::string VbRewriter::Variables(const Statement& statement, size_t from, bool isStatic) {
  std::string text;
  for (const Declared& declared :
       ReadDeclared(statement.tokens, from, statement.tokens.size(), statement.line, mistakes_)) {
    const std::string one = Declare(declared, isStatic, statement.line);
    if (!text.empty() && !one.empty()) text += ": ";
    text += one;
  }
  return text;
}

// One variable. In a procedure its first value goes to the head: a Dim inside a loop declares, but
// does not clear each time round.
std::string VbRewriter::Declare(Declared declared, bool isStatic, int line) {
  const std::string bounds = CheckedBounds(&declared, line);
  declared.isDynamic = declared.isArray && !(HasPlainBounds(declared) && !bounds.empty());
  (procedure_ ? names_.locals : survey_.module).Add(declared);
  if (isStatic) return KeepStatic(declared, line);
  std::string initial;
  std::string text = "Dim " + declared.name;
  if (declared.isArray && HasPlainBounds(declared)) {
    text += bounds;
  } else if (declared.isArray) {
    initial = "ReDim " + declared.name + bounds;
  } else if (!declared.type->initial.empty()) {
    initial = InitialStatement(declared.name, *declared.type);
  }
  if (initial.empty()) return text;
  if (!procedure_) return text + ": " + initial;
  output_.PutBehind(procedure_->head, initial);
  return text;
}

// A Static variable lives on as one of the module's, under a name of its own.
std::string VbRewriter::KeepStatic(const Declared& declared, int line) {
  if (declared.isArray && declared.bounds.empty()) {
    Refuse(line, "a Static array needs its size");
    return "";
  }
  const std::string kept = procedure_->name + "_" + declared.name + "_";
  names_.statics[LowerWord(declared.name)] = kept;
  output_.PutFirst("Dim " + kept);
  if (declared.isArray) {
    Declared array = declared;
    array.name = kept;
    output_.PutFirst("ReDim " + kept + CheckedBounds(&array, line));
  } else if (!declared.type->initial.empty()) {
    output_.PutFirst(InitialStatement(kept, *declared.type));
  }
  return "";
}

// The bounds as the engine takes them, "(5, 3)", every dimension from 0. The lower bounds written
// are kept for LBound. Empty for an array without bounds and for no array.
std::string VbRewriter::CheckedBounds(Declared* declared, int line) {
  std::string text;
  for (const ArrayBound& bound : declared->bounds) {
    if (!bound.lower.empty() && bound.lower[0].Is("-")) {
      Refuse(line, "an array cannot begin below 0");
    }
    declared->lowerBounds.push_back(bound.lower.empty() ? std::to_string(survey_.optionBase)
                                                        : Expression(bound.lower, line));
    text += (text.empty() ? "(" : ", ") + Expression(bound.upper, line);
  }
  return text.empty() ? text : text + ")";
}

std::string VbRewriter::OnReDim(const Statement& statement) {
  const bool preserve = statement.Has(1, "Preserve");
  std::string text;
  for (Declared& declared : ReadDeclared(statement.tokens, preserve ? 2 : 1,
                                         statement.tokens.size(), statement.line, mistakes_)) {
    if (declared.bounds.empty()) {
      Refuse(statement.line, "ReDim needs the bounds of " + declared.name);
      continue;
    }
    const std::string bounds = CheckedBounds(&declared, statement.line);
    if (const Declared* known = names_.Find(declared.name)) declared.type = known->type;
    declared.isDynamic = true;
    if (names_.locals.Find(declared.name) || !survey_.module.Find(declared.name)) {
      names_.locals.Add(declared);
    } else {
      survey_.module.Add(declared);
    }
    Tokens name(1);
    name[0].kind = TokenKind::Word;
    name[0].text = declared.name;
    text += (text.empty() ? "" : ", ") + Expression(name, statement.line) + bounds;
  }
  return text.empty() ? text : (preserve ? "ReDim Preserve " : "ReDim ") + text;
}

std::string VbRewriter::OnErase(const Statement& statement) {
  std::string text;
  for (const Tokens& name : SplitAtCommas(statement.tokens, 1, statement.tokens.size())) {
    const Declared* array = name.size() == 1 ? names_.Find(name[0].text) : nullptr;
    const std::string spelled = Expression(name, statement.line);
    const bool dynamic = array && array->isDynamic;
    text += (text.empty() ? "" : ": ") + (dynamic ? spelled + " = Empty" : "Erase " + spelled);
  }
  return text;
}

std::string VbRewriter::OnConst(const Statement& statement) {
  return Constants(statement, statement.Starts("Const") ? 1 : 2);
}

// A constant with anything but a plain value becomes a variable: the engine computes none.
std::string VbRewriter::Constants(const Statement& statement, size_t from) {
  std::string text;
  for (const Tokens& entry : SplitAtCommas(statement.tokens, from, statement.tokens.size())) {
    const size_t equals = FindOutside(entry, "=");
    const std::vector<Declared> name = ReadDeclared(entry, 0, equals, statement.line, mistakes_);
    if (name.empty()) continue;
    if (equals + 1 >= entry.size()) {
      Refuse(statement.line, "the constant " + name[0].name + " needs '=' and a value");
      continue;
    }
    const Tokens value = RewriteExpression(Slice(entry, equals + 1, entry.size()), names_,
                                           statement.line, mistakes_);
    if (procedure_) names_.locals.Add(name[0]);
    if (!text.empty()) text += ": ";
    text += IsPlainValue(value)
                ? "Const " + name[0].name + " = " + Spelled(value)
                : "Dim " + name[0].name + ": " + name[0].name + " = " + Spelled(value);
  }
  return text;
}

std::string VbRewriter::OnEnum(const Statement&) {
  inEnum_ = true;
  lastEnumerator_.clear();
  return "";
}

std::string VbRewriter::Enumerator(const Statement& statement) {
  const std::string name = statement.tokens[0].text;
  const Tokens& tokens = statement.tokens;
  std::string value = lastEnumerator_.empty() ? "0" : lastEnumerator_ + " + 1";
  if (tokens[0].kind != TokenKind::Word || (tokens.size() > 1 && !statement.Has(1, "="))) {
    Refuse(statement.line, "a name, or a name, '=' and a value are expected in an Enum");
    return "";
  }
  if (tokens.size() > 2) value = Expression(Slice(tokens, 2, tokens.size()), statement.line);
  lastEnumerator_ = name;
  return "Dim " + name + ": " + name + " = " + value;
}

std::string VbRewriter::OnRefusedBlock(const Statement& statement) {
  Statement bare = statement;
  if (!statement.Starts("Type") && !statement.Starts("Property")) {
    bare.tokens.erase(bare.tokens.begin());
  }
  Refuse(statement.line, WhyStatementRefused(bare));
  if (bare.Starts("Type") || bare.Starts("Property")) skipTo_ = bare.tokens[0].text;
  return "";
}

}  // namespace qrn::form
