#include "host/designer/panes/TypedValue.h"

#include <algorithm>
#include <utility>

namespace qrn::designer {

void TypedValue::Put(const PropertyRow& row, std::string text) {
  if (!typed_) typed_ = Typed{place_.design().selection(), row.info->name, row.text, {}};
  typed_->text = std::move(text);
}

void TypedValue::ForgetAll() noexcept {
  typed_.reset();
  aside_.reset();
  refusal_.reset();
}

bool TypedValue::PutAside() {
  if (!typed_ || typed_->ids == place_.design().selection()) return false;
  aside_ = std::exchange(typed_, {});
  return true;
}

// What is selected stays so, unless it is refused: then the user is led back.
Refusal TypedValue::Enter(const Typed& typed) {
  Design& design = place_.design();
  const Ids selected = design.selection();
  design.Select(typed.ids);
  Refusal refusal = PropertyList(design, &place_.offers()).Enter(typed.property, typed.text);
  design.Seal();
  if (!refusal) design.Select(selected);
  return refusal;
}

bool TypedValue::Take() {
  refusal_.reset();
  if (!typed_) return true;
  Typed typed = *std::exchange(typed_, {});
  if (typed.text == typed.before) return true;
  refusal_ = Enter(typed);
  if (refusal_) typed_ = std::move(typed);
  return !refusal_;
}

bool TypedValue::TakeAside() {
  if (!aside_ || typed_) return true;
  typed_ = std::exchange(aside_, {});
  const bool stands = std::any_of(typed_->ids.begin(), typed_->ids.end(),
                                  [&](ControlId id) { return place_.design().Has(id); });
  if (!stands) typed_.reset();
  return Take();
}

std::optional<TypedValue::Refused> TypedValue::TakeRefused() {
  const Refusal refusal = std::exchange(refusal_, {});
  if (!refusal || !typed_) return std::nullopt;
  return Refused{typed_->ids, typed_->property, typed_->text, *refusal};
}

}  // namespace qrn::designer
