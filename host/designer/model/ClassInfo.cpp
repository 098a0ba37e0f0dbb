#include "host/designer/model/ClassInfo.h"

#include "host/form/SourceText.h"

namespace qrn::designer {
namespace {

using form::SameWord;

struct OfferRow {
  std::string_view ending;
  Offer offer;
};
// The controls' names for what they are bound to, by their endings; the first that fits counts.
constexpr OfferRow kOffers[] = {
    {"Source", Offer::Source},    {"Table", Offer::Table}, {"Fields", Offer::Fields},
    {"ListField", Offer::Fields}, {"Field", Offer::Field}, {"Index", Offer::Key},
};

PropertyInfo Row(const char* name, PropertyKind kind,
                 std::optional<form::PropertyValue> initial = {}) {
  PropertyInfo info;
  info.name = name;
  info.kind = kind;
  info.initial = std::move(initial);
  return info;
}

PropertyInfo Ranged(const char* name, int32_t least, int32_t most) {
  PropertyInfo info = Row(name, PropertyKind::Whole);
  info.least = least;
  info.most = most;
  return info;
}

template <class Rows>
auto FindNamed(const Rows& rows, std::string_view name) noexcept -> decltype(rows.data()) {
  for (const auto& row : rows) {
    if (SameWord(row.name, name)) return &row;
  }
  return nullptr;
}

}  // namespace

const PropertyInfo* ClassInfo::Property(std::string_view propertyName) const noexcept {
  if (const PropertyInfo* named = FindNamed(properties, propertyName)) return named;
  for (const PropertyInfo& row : properties) {
    if (SameWord(row.LineName(), propertyName)) return &row;
  }
  return nullptr;
}

const EventInfo* ClassInfo::Event(std::string_view eventName) const noexcept {
  return FindNamed(events, eventName);
}

std::optional<form::PropertyValue> ClassInfo::FirstValue(std::string_view line) const {
  const form::Property* first = FindNamed(firstProperties, line);
  return first ? std::optional(first->value) : std::nullopt;
}

const std::vector<PropertyInfo>& ExtenderProperties() {
  static const std::vector<PropertyInfo> rows = [] {
    const form::PropertyValue none = std::string();
    std::vector<PropertyInfo> list{
        Row("Name", PropertyKind::Text),
        Ranged("Index", 0, 32767),
        Row("Left", PropertyKind::Fraction),
        Row("Top", PropertyKind::Fraction),
        Row("Width", PropertyKind::Fraction),
        Row("Height", PropertyKind::Fraction),
        Ranged("TabIndex", 0, 32767),
        Row("TabStop", PropertyKind::Boolean, int32_t{-1}),
        Row("Tag", PropertyKind::Text, none),
        Row("ToolTipText", PropertyKind::Text, none),
        Row("Visible", PropertyKind::Boolean, int32_t{-1}),
    };
    return list;
  }();
  return rows;
}

Offer OfferOf(std::string_view propertyName) noexcept {
  if (propertyName.size() < 2 || !SameWord(propertyName.substr(0, 2), "Db")) return Offer::None;
  for (const OfferRow& row : kOffers) {
    const bool fits =
        propertyName.size() > row.ending.size() &&
        SameWord(propertyName.substr(propertyName.size() - row.ending.size()), row.ending);
    if (fits) return row.offer;
  }
  return Offer::None;
}

}  // namespace qrn::designer
