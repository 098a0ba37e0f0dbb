#include "host/designer/model/ShownForm.h"

#include <algorithm>
#include <iterator>
#include <set>

#include "host/designer/document/PropertyText.h"
#include "host/designer/model/FurnitureInfo.h"
#include "host/designer/model/Places.h"
#include "host/form/SourceText.h"

namespace qrn::designer {
namespace {

// Would keep what is designed from being seen.
constexpr std::string_view kHiding[] = {"Visible"};
// Means the program's window, not the one in the designer.
constexpr std::string_view kWindows[] = {"Visible",         "Enabled",      "WindowState",
                                         "StartUpPosition", "Moveable",     "ClientLeft",
                                         "ClientTop",       "MousePointer", "MouseIcon"};

template <size_t Count>
bool Names(const std::string_view (&words)[Count], std::string_view word) {
  return std::any_of(std::begin(words), std::end(words),
                     [&](std::string_view known) { return form::SameWord(known, word); });
}

bool IsPlace(std::string_view name) {
  constexpr std::string_view kPlace[] = {"Left", "Top", "Width", "Height", "Index", "TabIndex"};
  return Names(kPlace, name);
}

form::Property Line(std::string name, form::PropertyValue value) {
  return {std::move(name), 0, std::move(value), false, {}, {}};
}

// A box with the name of what cannot be shown; a frame where something lies in it.
void MakeStandIn(form::ControlNode* node) {
  constexpr int32_t kBoxColour = 0x00E1FFFF;
  const std::string text = node->className + "\r\n" + node->name;
  std::erase_if(node->properties, [](const auto& property) { return !IsPlace(property.name); });
  node->className = node->children.empty() ? "Label" : "Frame";
  node->library = "VB";
  node->properties.push_back(Line("Caption", text));
  if (!node->children.empty()) return;
  node->properties.push_back(Line("BackColor", kBoxColour));
  node->properties.push_back(Line("BorderStyle", int32_t{1}));
}

bool IsStandIn(const form::ControlNode& node) {
  return node.Is("VB", "Label") || node.Is("VB", "Frame");
}

class Builder {
 public:
  explicit Builder(const Design& design) : design_(design) {}

  form::ControlNode Node(ControlId id) {
    const Block& block = design_.At(id);
    form::ControlNode node{block.library(),
                           block.className(),
                           block.Name(),
                           ++line_,
                           design_.Index(id).value_or(-1),
                           {},
                           {}};
    for (const Item& item : block.items()) Take(item, id, &node.properties);
    for (const ControlId inner : design_.Inside(id)) node.children.push_back(Node(inner));
    if (!IsKnown(id)) MakeStandIn(&node);
    return node;
  }

 private:
  bool IsKnown(ControlId id) const {
    if (id == design_.form()) return true;
    const Block& block = design_.At(id);
    const bool isPiece = form::SameWord(block.library(), "VB");
    return isPiece ? FurnitureInfo(block.className()) != nullptr : design_.Class(id) != nullptr;
  }

  void Take(const Item& item, ControlId id, std::vector<form::Property>* into) {
    std::optional<form::Property> property = PropertyOf(item, design_.document().text());
    if (!property || Names(kHiding, property->name)) return;
    if (id == design_.form() && Names(kWindows, property->name)) return;
    property->line = ++line_;
    if (auto* reference = std::get_if<form::FileReference>(&property->value)) {
      const Companion& companion = design_.companion();
      if (companion.IsName(reference->fileName)) reference->fileName = companion.name();
    }
    into->push_back(std::move(*property));
  }

  const Design& design_;
  int line_ = 0;
};

bool TakeOutOf(form::ControlNode* node, const std::set<int>& lines, bool isForm) {
  const auto isMeant = [&](int line) { return lines.contains(line); };
  size_t taken =
      std::erase_if(node->properties, [&](const auto& property) { return isMeant(property.line); });
  if (isMeant(node->line) && !isForm && !IsStandIn(*node)) MakeStandIn(node), ++taken;
  for (form::ControlNode& inner : node->children) {
    // What lies in something that holds nothing is told of by the first of it.
    const bool holdsNone = isMeant(inner.line) && IsStandIn(inner) && !isForm && !IsStandIn(*node);
    if (holdsNone) MakeStandIn(node), ++taken;
    if (TakeOutOf(&inner, lines, false)) ++taken;
  }
  return taken > 0;
}

}  // namespace

form::FormFile ShownForm(const Design& design) {
  form::FormFile file;
  file.form = Builder(design).Node(design.form());
  file.form.library = "VB";
  file.form.className = "Form";
  return file;
}

form::ControlNode ShownControl(const Design& design, ControlId id) {
  form::ControlNode node = Builder(design).Node(id);
  node.children.clear();
  return node;
}

bool TakeOut(form::ControlNode* control, const form::Mistakes& mistakes) {
  std::set<int> lines;
  for (const form::Mistake& mistake : mistakes.List()) lines.insert(mistake.line);
  return TakeOutOf(control, lines, false);
}

bool TakeOut(form::FormFile* file, const form::Mistakes& mistakes) {
  std::set<int> lines;
  for (const form::Mistake& mistake : mistakes.List()) lines.insert(mistake.line);
  return TakeOutOf(&file->form, lines, true);
}

}  // namespace qrn::designer
