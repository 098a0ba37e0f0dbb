#include "host/designer/model/PropertyRules.h"

#include <algorithm>
#include <iterator>

#include "host/designer/model/Names.h"
#include "host/designer/model/Places.h"
#include "host/designer/model/TabOrder.h"
#include "host/form/SourceText.h"

namespace qrn::designer {
namespace {

using form::PropertyValue;
using form::SameWord;

int32_t Whole(const PropertyValue& value) {
  const int32_t* number = std::get_if<int32_t>(&value);
  return number ? *number : 0;
}

double Number(const PropertyValue& value) {
  const double* fraction = std::get_if<double>(&value);
  return fraction ? *fraction : Whole(value);
}

Refusal PutName(Design& design, ControlId id, const PropertyInfo&, const PropertyValue& value) {
  const std::string* name = std::get_if<std::string>(&value);
  return Rename(design, id, name ? *name : std::string());
}

Refusal PutElement(Design& design, ControlId id, const PropertyInfo&, const PropertyValue& value) {
  const bool alone = std::holds_alternative<std::string>(value);
  return PutIndex(design, id, alone ? std::nullopt : std::optional<int>(Whole(value)));
}

Refusal PutOrder(Design& design, ControlId id, const PropertyInfo&, const PropertyValue& value) {
  return PutTabIndex(design, id, Whole(value));
}

Refusal PutSize(Design& design, ControlId id, const PropertyInfo& info,
                const PropertyValue& value) {
  if (Number(value) < 0) {
    return Message{TextId::RangeExpected, {"0", std::to_string(kLargestSize)}};
  }
  if (Refusal refusal = design.Put(id, info.name, value)) return refusal;
  return id == design.form() ? PutScaleSize(design) : PutExtents(design, id);
}

// What lies on the form stays where it is, told in the new scale.
Refusal PutScaleMode(Design& design, ControlId id, const PropertyInfo& info,
                     const PropertyValue& value) {
  std::vector<std::pair<ControlId, Place>> places;
  for (const ControlId inner : design.Inside(id)) {
    if (HasPlace(design, inner)) places.emplace_back(inner, PlaceOf(design, inner));
  }
  if (Refusal refusal = design.Put(id, info.name, value)) return refusal;
  if (Refusal refusal = PutScaleSize(design)) return refusal;
  for (const auto& [inner, place] : places) {
    if (Refusal refusal = PutPlace(design, inner, place)) return refusal;
  }
  return {};
}

// Only one button is the default one, one is pressed by Esc.
Refusal PutOnlyHere(Design& design, ControlId id, const PropertyInfo& info,
                    const PropertyValue& value) {
  for (const ControlId other : design.All()) {
    if (Whole(value) == 0 || other == id || !design.Value(other, info.name)) continue;
    if (Refusal refusal = design.Put(other, info.name, int32_t{0})) return refusal;
  }
  return design.Put(id, info.name, value);
}

struct Rule {
  const char* property;
  Refusal (*put)(Design&, ControlId, const PropertyInfo&, const PropertyValue&);
};
constexpr Rule kRules[] = {
    {"Name", PutName},         {"Index", PutElement},       {"TabIndex", PutOrder},
    {"Width", PutSize},        {"Height", PutSize},         {"ClientWidth", PutSize},
    {"ClientHeight", PutSize}, {"ScaleMode", PutScaleMode}, {"Default", PutOnlyHere},
    {"Cancel", PutOnlyHere},
};

}  // namespace

Refusal PutByRules(Design& design, ControlId id, const PropertyInfo& info,
                   const PropertyValue& value) {
  for (const Rule& rule : kRules) {
    if (SameWord(rule.property, info.name)) return rule.put(design, id, info, value);
  }
  return design.Put(id, info.name, value);
}

}  // namespace qrn::designer
