#include "host/runner/ControlSet.h"

#include <algorithm>
#include <map>

#include "host/container/ControlClasses.h"
#include "host/container/Text.h"
#include "host/runner/furniture/Furniture.h"

namespace qrn::host {

void ControlSet::Add(Form& form, const std::vector<form::ControlNode>& nodes,
                     FormControl* container, form::Mistakes& mistakes) {
  for (const form::ControlNode& node : nodes) {
    Com<FormControl> control;
    try {
      control = MakeFormControl(form, container, node);
    } catch (const ClassNotFound& unknown) {
      mistakes.Add(node.line, unknown.reason);
      continue;
    }
    if (Find(Wide(node.name), node.index)) {
      mistakes.Add(node.line, node.name + " stands twice on the form");
      continue;
    }
    list_.push_back(control);
    if (node.index >= 0) AddToArray(*control);
    if (!node.children.empty() && !control->HoldsOthers()) {
      mistakes.Add(node.children[0].line, node.name + " cannot hold other controls");
    }
    Add(form, node.children, control.get(), mistakes);
  }
}

void ControlSet::AddToArray(FormControl& element) {
  for (const auto& [name, array] : arrays_) {
    if (SameName(name, element.name())) return array->Add(element);
  }
  arrays_.emplace_back(element.name(), MakeCom<ControlArray>(element.name()));
  arrays_.back().second->Add(element);
}

void ControlSet::RemoveFromArray(const FormControl& element) noexcept {
  for (const auto& [name, array] : arrays_) {
    if (array->Find(element.index()) == &element) array->Remove(element.index());
  }
}

void ControlSet::Remove(FormControl& control) noexcept {
  const Com<FormControl> alive(&control);
  for (size_t at = list_.size(); at-- > 0;) {
    const Com<FormControl> gone = list_[at];
    if (gone.get() != &control && !gone->LiesIn(control)) continue;
    list_.erase(list_.begin() + static_cast<std::ptrdiff_t>(at));
    RemoveFromArray(*gone);
    gone->Detach();
  }
}

void ControlSet::Arrange(const std::vector<FormControl*>& order) {
  std::map<const FormControl*, size_t> places;
  for (FormControl* control : order) places.emplace(control, places.size());
  const auto placeOf = [&](const Com<FormControl>& control) {
    const auto place = places.find(control.get());
    return place == places.end() ? places.size() : place->second;
  };
  std::ranges::stable_sort(list_, {}, placeOf);
}

void ControlSet::Clear() noexcept {
  for (const auto& [name, array] : arrays_) array->Clear();
  arrays_.clear();
  for (const Com<FormControl>& control : list_) control->Detach();
  list_.clear();
}

FormControl* ControlSet::Find(std::wstring_view name, int index) const noexcept {
  for (const Com<FormControl>& control : list_) {
    if (control->index() == index && SameName(control->name(), name)) return control.get();
  }
  return nullptr;
}

Com<IDispatch> ControlSet::Object(std::wstring_view name) const {
  for (const auto& [arrayName, array] : arrays_) {
    if (SameName(arrayName, name)) return Com<IDispatch>(array.get());
  }
  FormControl* control = Find(name);
  return control ? Com<IDispatch>(control) : Com<IDispatch>();
}

FormControl* ControlSet::Of(HWND window) const noexcept {
  FormControl* found = nullptr;
  for (const Com<FormControl>& control : list_) {
    HWND own = control->Window();
    if (!own || (own != window && !IsChild(own, window))) continue;
    if (!found || control->LiesIn(*found)) found = control.get();
  }
  return found;
}

}  // namespace qrn::host
