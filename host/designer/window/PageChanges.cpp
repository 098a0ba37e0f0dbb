#include "host/designer/window/PageChanges.h"

#include <algorithm>

#include "host/designer/document/PropertyText.h"
#include "host/form/SourceText.h"

namespace qrn::designer {
namespace {

const SavedProperty* Find(const std::vector<SavedProperty>& state, const std::string& name) {
  const auto found = std::find_if(state.begin(), state.end(), [&](const SavedProperty& saved) {
    return form::SameWord(saved.line.name, name);
  });
  return found == state.end() ? nullptr : &*found;
}

bool AreSame(const form::Property& one, const form::Property& other) {
  return ValueText(one.value) == ValueText(other.value) && one.isGroup == other.isGroup &&
         std::equal(one.group.begin(), one.group.end(), other.group.begin(), other.group.end(),
                    AreSame);
}

bool AreSame(const SavedProperty& one, const SavedProperty& other) {
  return one.isPicture == other.isPicture && one.image == other.image &&
         AreSame(one.line, other.line);
}

Refusal Put(Design& design, ControlId id, const SavedProperty& saved) {
  if (saved.isPicture) return design.PutPicture(id, saved.line.name, saved.image);
  if (saved.line.isGroup) return design.PutGroup(id, saved.line);
  return design.Put(id, saved.line.name, saved.line.value);
}

}  // namespace

Refusal PageChanges::PutInto(Design& design, ControlId id) const {
  const std::vector<SavedProperty> after = SavedStateOf(control_.get());
  design.Seal();
  Step step(design, TextId::ChangeProperty, {design.Name(id)});
  Refusal refusal;
  for (const SavedProperty& saved : after) {
    const SavedProperty* old = Find(before_, saved.line.name);
    if (!refusal && !(old && AreSame(*old, saved))) refusal = Put(design, id, saved);
  }
  for (const SavedProperty& saved : before_) {
    if (!Find(after, saved.line.name)) design.Remove(id, saved.line.name);
  }
  return step.Commit(refusal);
}

}  // namespace qrn::designer
