#include "host/form/VbDeclarations.h"

#include "host/form/SourceText.h"
#include "host/form/VbStatements.h"

namespace qrn::form {
namespace {

// Reads one entry. The position moves along as parts are recognised.
class EntryReader {
 public:
  EntryReader(const Tokens& tokens, int line, Mistakes& mistakes)
      : tokens_(tokens), line_(line), mistakes_(mistakes) {}

  bool Read(Declared* declared) {
    if (!ReadName(declared)) return Fail("a name is expected in the declaration");
    ReadBounds(declared);
    if (!ReadType(declared)) return false;
    if (at_ == tokens_.size()) return true;
    return Fail("'" + tokens_[at_].text + "' is not expected in the declaration of " +
                declared->name);
  }

  bool ReadPassing(Declared* declared) {
    for (; at_ < tokens_.size(); ++at_) {
      if (Is("Optional")) return Fail("an Optional parameter cannot be had: pass all of them");
      if (Is("ParamArray")) return Fail("ParamArray cannot be had: pass an array");
      if (Is("ByVal")) {
        declared->byValue = true;
      } else if (!Is("ByRef")) {
        return true;
      }
    }
    return true;
  }

 private:
  bool Is(std::string_view word) const { return at_ < tokens_.size() && tokens_[at_].Is(word); }

  bool Fail(std::string reason) {
    mistakes_.Add(line_, std::move(reason));
    return false;
  }

  bool ReadName(Declared* declared) {
    if (at_ == tokens_.size() || tokens_[at_].kind != TokenKind::Word) return false;
    declared->name = tokens_[at_].text;
    declared->type = &TypeMarked(tokens_[at_].typeMark);
    ++at_;
    return true;
  }

  void ReadBounds(Declared* declared) {
    if (!Is("(")) return;
    declared->isArray = true;
    const size_t behind = BehindParenthesis(tokens_, at_);
    if (behind > at_ + 2) {
      for (const Tokens& bound : SplitAtCommas(tokens_, at_ + 1, behind - 1)) {
        const size_t to = FindOutside(bound, "To");
        const bool both = to < bound.size();
        declared->bounds.push_back({both ? Slice(bound, 0, to) : Tokens(),
                                    both ? Slice(bound, to + 1, bound.size()) : bound});
      }
    }
    at_ = behind;
  }

  bool ReadType(Declared* declared) {
    if (!Is("As")) return true;
    ++at_;
    if (Is("New")) {
      return Fail("'As New' cannot be had: declare it As Object and use Set ... = CreateObject");
    }
    if (at_ == tokens_.size() || tokens_[at_].kind != TokenKind::Word) {
      return Fail("the type behind 'As' is missing");
    }
    declared->type = &TypeNamed(tokens_[at_].text);
    for (++at_; Is("."); at_ += 2) {
    }
    if (Is("*")) return Fail("a text of fixed length cannot be had: declare it As String");
    at_ = std::min(at_, tokens_.size());
    return true;
  }

  const Tokens& tokens_;
  int line_;
  Mistakes& mistakes_;
  size_t at_ = 0;
};

}  // namespace

std::vector<Declared> ReadDeclared(const Tokens& tokens, size_t begin, size_t end, int line,
                                   Mistakes& mistakes) {
  std::vector<Declared> list;
  for (const Tokens& entry : SplitAtCommas(tokens, begin, end)) {
    Declared declared;
    if (EntryReader(entry, line, mistakes).Read(&declared)) list.push_back(std::move(declared));
  }
  return list;
}

std::vector<Declared> ReadParameters(const Tokens& tokens, size_t begin, size_t end, int line,
                                     Mistakes& mistakes) {
  std::vector<Declared> list;
  if (begin >= end) return list;
  for (const Tokens& entry : SplitAtCommas(tokens, begin, end)) {
    Declared declared;
    EntryReader reader(entry, line, mistakes);
    if (reader.ReadPassing(&declared) && reader.Read(&declared)) {
      list.push_back(std::move(declared));
    }
  }
  return list;
}

void Scope::Add(const Declared& declared) { names_[LowerWord(declared.name)] = declared; }

const Declared* Scope::Find(std::string_view name) const {
  const auto found = names_.find(LowerWord(name));
  return found == names_.end() ? nullptr : &found->second;
}

}  // namespace qrn::form
