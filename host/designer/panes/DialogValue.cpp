#include "host/designer/panes/DialogValue.h"

#include <stdexcept>

#include "host/designer/panes/PaneTexts.h"
#include "host/designer/panes/PropertyDialogs.h"
#include "host/form/SourceText.h"

namespace qrn::designer {
namespace {

PropertyList ListAt(Workplace& place) { return PropertyList(place.design(), &place.offers()); }

Refusal EnterColour(Workplace& place, const PropertyInfo& info, const std::string& shown) {
  form::PropertyValue now;
  ReadTyped(shown, info, &now);
  const int32_t* colour = std::get_if<int32_t>(&now);
  const auto mixed = AskColour(place.Frame(), colour ? static_cast<uint32_t>(*colour) : 0);
  return mixed ? ListAt(place).EnterColour(info.name, *mixed) : Refusal{};
}

Refusal EnterFont(Workplace& place, const PropertyInfo& info) {
  const Design& design = place.design();
  const auto now = design.Group(design.Primary(), info.LineName());
  const auto font = AskFont(place.Frame(), info.name, now);
  return font ? ListAt(place).EnterFont(*font) : Refusal{};
}

Refusal EnterPicture(Workplace& place, const PropertyInfo& info) {
  const auto path = AskPictureFile(place.Frame(), place.language());
  if (!path) return {};
  try {
    const std::string bytes = form::ReadWholeFile(*path);
    if (IsPicture(bytes)) return ListAt(place).EnterPicture(info.name, bytes);
    place.Tell(Said(PaneText::NoPicture, place.language(), {*path}));
  } catch (const std::runtime_error& error) {
    place.Tell(std::string(error.what()));
  }
  return {};
}

}  // namespace

Refusal EnterByDialog(Workplace& place, const PropertyRow& row) {
  const PropertyInfo info = *row.info;
  if (info.kind == PropertyKind::Picture) return EnterPicture(place, info);
  if (info.kind == PropertyKind::Font) return EnterFont(place, info);
  return EnterColour(place, info, row.text);
}

}  // namespace qrn::designer
