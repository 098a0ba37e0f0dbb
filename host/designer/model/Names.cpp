#include "host/designer/model/Names.h"

#include <algorithm>
#include <iterator>

#include "host/designer/document/PropertyText.h"
#include "host/form/SourceText.h"
#include "platform/Utf.h"

namespace qrn::designer {
namespace {

constexpr int kLargestIndex = 32767;

// Words that no control can be called.
constexpr const char* kReserved[] = {
    "AddressOf",  "And",        "Any",     "As",       "Boolean",  "ByRef",   "Byte",
    "ByVal",      "Call",       "Case",    "CBool",    "CByte",    "CCur",    "CDate",
    "CDbl",       "CDec",       "CInt",    "CLng",     "Close",    "Const",   "CSng",
    "CStr",       "Currency",   "CVar",    "CVErr",    "Date",     "Debug",   "Declare",
    "DefBool",    "DefByte",    "DefCur",  "DefDate",  "DefDbl",   "DefInt",  "DefLng",
    "DefObj",     "DefSng",     "DefStr",  "DefVar",   "Dim",      "Do",      "Double",
    "Each",       "Else",       "ElseIf",  "Empty",    "End",      "EndIf",   "Enum",
    "Eqv",        "Erase",      "Event",   "Exit",     "False",    "For",     "Friend",
    "Function",   "Get",        "Global",  "GoSub",    "GoTo",     "If",      "Imp",
    "Implements", "In",         "Input",   "Integer",  "Is",       "LBound",  "Len",
    "Let",        "Like",       "Local",   "Lock",     "Long",     "Loop",    "LSet",
    "Me",         "Mod",        "New",     "Next",     "Not",      "Nothing", "Null",
    "Object",     "On",         "Open",    "Option",   "Optional", "Or",      "ParamArray",
    "Preserve",   "Print",      "Private", "Property", "Public",   "Put",     "RaiseEvent",
    "ReDim",      "Rem",        "Resume",  "Return",   "RSet",     "Seek",    "Select",
    "Set",        "Shared",     "Single",  "Spc",      "Static",   "Step",    "Stop",
    "String",     "Sub",        "Tab",     "Then",     "To",       "True",    "Type",
    "TypeOf",     "UBound",     "Unlock",  "Until",    "Variant",  "Wend",    "While",
    "With",       "WithEvents", "Write",   "Xor"};

void AddNames(const Block& block, std::set<std::string>* names) {
  names->insert(form::LowerWord(block.Name()));
  for (const Item& item : block.items()) {
    if (item.block && item.block->kind() == BlockKind::Control) AddNames(*item.block, names);
  }
}

// Blocks of that name but the control itself.
std::vector<const Block*> Namesakes(const Block& block, std::string_view name, ControlId but) {
  std::vector<const Block*> found;
  if (block.id() != but && form::SameWord(block.Name(), name)) found.push_back(&block);
  for (const Item& item : block.items()) {
    if (!item.block || item.block->kind() != BlockKind::Control) continue;
    const auto inner = Namesakes(*item.block, name, but);
    found.insert(found.end(), inner.begin(), inner.end());
  }
  return found;
}

// Whether the control may be an element, with that index, beside those of its name.
Refusal JudgeElement(const Design& design, ControlId id, std::string_view name,
                     std::optional<int> index) {
  const Block& block = design.At(id);
  for (const Block* other : Namesakes(*design.document().form(), name, id)) {
    const auto taken = design.Has(other->id()) ? design.Index(other->id()) : std::nullopt;
    if (!index || !taken || !other->Is(block.library(), block.className())) {
      return Message{TextId::NameTaken, {std::string(name)}};
    }
    if (*taken == *index) {
      return Message{TextId::IndexTaken, {std::string(name), std::to_string(*index)}};
    }
  }
  return {};
}

// The Attribute line that carries a form's name to its code.
Refusal RenameAttribute(Design& design, const std::string& name) {
  const BlockRef& attributes = design.document().attributes();
  const FileText& text = design.document().text();
  for (size_t at = 0; at < attributes->items().size(); ++at) {
    const std::string line = text.Decode(attributes->items()[at].bytes);
    const size_t word = line.find_first_not_of(" \t", std::min<size_t>(line.size(), 9));
    if (word == std::string::npos || !form::SameWord(line.substr(word, 7), "VB_Name")) continue;
    const auto bytes = text.Encode("Attribute VB_Name = \"" + name + "\"");
    if (!bytes) return Message{TextId::NotWritable, {name}};
    Splice splice{attributes, at, 1, {}};
    splice.items.push_back({*bytes + text.lineEnd, {}, nullptr});
    design.Make(std::move(splice));
  }
  return {};
}

}  // namespace

std::string StemOf(const Design& design, std::string_view library, std::string_view className) {
  const ClassInfo* info = design.classes().Find(library, className);
  return info && !info->stem.empty() ? info->stem : std::string(className);
}

std::set<std::string> NamesOn(const Design& design) {
  std::set<std::string> names;
  AddNames(*design.document().form(), &names);
  return names;
}

std::string NewName(const Design& design, std::string_view stem,
                    const std::set<std::string>& taken) {
  const std::set<std::string> names = NamesOn(design);
  const std::string start(form::IsName(stem) ? stem : "Control");
  for (int number = 1;; ++number) {
    std::string name = start + std::to_string(number);
    const std::string lower = form::LowerWord(name);
    if (!names.contains(lower) && !taken.contains(lower)) return name;
  }
}

Refusal JudgeName(std::string_view name) {
  if (name.empty()) return Message{TextId::NameMissing, {}};
  if (!form::IsName(name)) return Message{TextId::NameNoName, {std::string(name)}};
  if (Utf8ToUtf16(name).size() > kLongestName) {
    return Message{TextId::NameTooLong, {std::to_string(kLongestName)}};
  }
  const bool reserved = std::any_of(std::begin(kReserved), std::end(kReserved),
                                    [&](const char* word) { return form::SameWord(word, name); });
  if (reserved) return Message{TextId::NameReserved, {std::string(name)}};
  return {};
}

Refusal Rename(Design& design, ControlId id, const std::string& name) {
  if (name == design.Name(id)) return {};
  if (Refusal refusal = JudgeName(name)) return refusal;
  if (Refusal refusal = JudgeElement(design, id, name, design.Index(id))) return refusal;
  Step step(design, TextId::RenameControl);
  const BlockRef control = design.Hold(id);
  auto item = BeginItem(*control, name, design.document().text());
  if (!item) return Message{TextId::NotWritable, {name}};
  Splice splice{control, 0, 1, {}};
  splice.items.push_back(std::move(*item));
  design.Make(std::move(splice));
  return step.Commit(id == design.form() ? RenameAttribute(design, name) : Refusal{});
}

Refusal PutIndex(Design& design, ControlId id, std::optional<int> index) {
  if (index && (*index < 0 || *index > kLargestIndex)) return Message{TextId::IndexRange, {}};
  if (Refusal refusal = JudgeElement(design, id, design.Name(id), index)) {
    return index ? refusal : Message{TextId::ArrayNeedsIndex, {design.Name(id)}};
  }
  Step step(design, TextId::ChangeProperty, {"Index"});
  if (!index) return design.Remove(id, "Index"), step.Commit(Refusal{});
  return step.Commit(design.Put(id, "Index", form::PropertyValue(int32_t{*index})));
}

}  // namespace qrn::designer
