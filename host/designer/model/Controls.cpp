#include "host/designer/model/Controls.h"

#include <algorithm>

#include "host/designer/document/PropertyText.h"
#include "host/designer/model/Names.h"
#include "host/designer/model/TabOrder.h"
#include "host/form/SourceText.h"

namespace qrn::designer {
namespace {

Refusal PutFirst(Design& design, ControlId id, const form::Property& property) {
  return property.isGroup ? design.PutGroup(id, property)
                          : design.Put(id, property.name, property.value);
}

// What the furniture shows is its name at first.
Refusal PutCaption(Design& design, ControlId id, const ClassInfo& info) {
  if (!form::SameWord(info.library, "VB")) return {};
  for (const char* shown : {"Caption", "Text"}) {
    const PropertyInfo* property = info.Property(shown);
    if (property && !property->initial) return design.Put(id, shown, design.Name(id));
  }
  return {};
}

Refusal PutFirstLines(Design& design, ControlId id, const Place& place) {
  const ClassInfo* info = design.Class(id);
  if (info) {
    for (const form::Property& property : info->firstProperties) {
      if (Refusal refusal = PutFirst(design, id, property)) return refusal;
    }
    if (Refusal refusal = PutCaption(design, id, *info)) return refusal;
  }
  if (Refusal refusal = PutFirstPlace(design, id, place)) return refusal;
  if (info && !info->hasSize) return {};
  return design.Put(id, "TabIndex", NextTabIndex(design));
}

Refusal NeedLibraryOf(Design& design, const std::string& name) {
  const auto library = design.classes().Library(name);
  return library ? design.NeedLibrary(*library) : Refusal{};
}

enum class Layer { Front, Back };

Refusal Restack(Design& design, const Ids& ids, Layer layer) {
  Step step(design, layer == Layer::Front ? TextId::BringToFront : TextId::SendToBack);
  Ids moving = Outermost(design, ids);
  if (layer == Layer::Front) std::reverse(moving.begin(), moving.end());
  for (const ControlId id : moving) {
    const ControlId container = design.Container(id);
    const auto all = design.Inside(container);
    if (id == (layer == Layer::Front ? all.front() : all.back())) continue;
    const BlockRef control = design.TakeOut(id);
    if (layer == Layer::Front) {
      design.PutInFront(container, control);
    } else {
      design.PutBefore(container, control, 0);
    }
  }
  return step.Commit(Refusal{});
}

}  // namespace

Ids Outermost(const Design& design, const Ids& ids) {
  Ids outermost;
  for (const ControlId id : design.All()) {
    const bool isMeant = std::find(ids.begin(), ids.end(), id) != ids.end();
    const bool isInside = std::any_of(ids.begin(), ids.end(), [&](ControlId outer) {
      return outer != design.form() && design.Has(outer) && design.LiesIn(id, outer);
    });
    if (isMeant && !isInside) outermost.push_back(id);
  }
  return outermost;
}

Refusal AddControl(Design& design, const NewControl& control, ControlId* added) {
  if (!design.HoldsOthers(control.container)) {
    return Message{TextId::ContainerExpected, {design.Name(control.container)}};
  }
  const std::string name = NewName(design, StemOf(design, control.library, control.className));
  Step step(design, TextId::AddControl, {name});
  const auto block =
      ControlBlock(control.library, control.className, name,
                   design.At(control.container).Depth() + 1, design.document().text());
  if (!block) return Message{TextId::NotWritable, {name}};
  design.PutInFront(control.container, *block);
  const ControlId id = (*block)->id();
  Refusal refusal = PutFirstLines(design, id, control.place);
  if (!refusal) refusal = NeedLibraryOf(design, control.library);
  if (!refusal) design.Select({id});
  if (!refusal && added) *added = id;
  return step.Commit(std::move(refusal));
}

std::vector<int32_t> TabIndexesIn(const Design& design, ControlId id) {
  std::vector<int32_t> indexes;
  for (const ControlId inner : TabOrderOf(design)) {
    if (inner != id && !design.LiesIn(inner, id)) continue;
    indexes.push_back(static_cast<int32_t>(design.NumberValue(inner, "TabIndex", 0)));
  }
  return indexes;
}

Refusal DeleteControls(Design& design, const Ids& ids) {
  Step step(design, TextId::DeleteControls);
  std::vector<int32_t> gone;
  for (const ControlId id : Outermost(design, ids)) {
    const std::vector<int32_t> indexes = TabIndexesIn(design, id);
    gone.insert(gone.end(), indexes.begin(), indexes.end());
    design.TakeOut(id);
  }
  return step.Commit(CloseTabOrder(design, gone));
}

Refusal MoveInto(Design& design, const Ids& ids, ControlId container) {
  const Message refused{TextId::ContainerExpected, {design.Name(container)}};
  if (!design.HoldsOthers(container)) return refused;
  Step step(design, TextId::MoveInto, {design.Name(container)});
  Ids moving = Outermost(design, ids);
  std::reverse(moving.begin(), moving.end());  // the front one last, so that it is in front again
  for (const ControlId id : moving) {
    if (design.Container(id) == container) continue;
    if (id == container || design.LiesIn(container, id)) return refused;
    Place place = PlaceOnForm(design, id);
    const int depth = design.At(id).Depth();
    const int levels = design.At(container).Depth() + 1 - depth;
    const BlockRef taken = design.TakeOut(id);
    design.PutInFront(container, Reindented(*taken, levels));
    const Point origin = OriginOnForm(design, container);
    place.left -= origin.x;
    place.top -= origin.y;
    if (!HasPlace(design, id)) continue;
    if (Refusal refusal = PutPlace(design, id, place)) return refusal;
  }
  return step.Commit(Refusal{});
}

Refusal BringToFront(Design& design, const Ids& ids) { return Restack(design, ids, Layer::Front); }

Refusal SendToBack(Design& design, const Ids& ids) { return Restack(design, ids, Layer::Back); }

}  // namespace qrn::designer
