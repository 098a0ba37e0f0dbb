#include "host/newform/Drawing.h"

#include <algorithm>
#include <utility>

#include "host/newform/Metrics.h"

namespace qrn::newform {
namespace {

constexpr unsigned kButtonFace = 0x8000000F;

void DrawEdit(Drawing& d, std::vector<FormPart>& to, const CardControl& control, const Box& box) {
  const FieldFit& fit = control.fit;
  FormPart& part = d.Add(to, d.Bound("QRNEdit", control.control, box));
  part.Text("DbField", d.plan.table.fields[control.field].name).Number("IMEMode", fit.imeMode);
  if (fit.maxLength > 0) part.Number("MaxLength", fit.maxLength);
  if (fit.isNumber) part.Number("Alignment", 1);
  if (fit.isNumber || fit.isMoment) part.Truth("NumericMask", true);
  if (!fit.format.empty()) part.Text("Format", fit.format);
  if (fit.control == Control::Note) part.Truth("MultiLine", true);
}

void DrawCheck(Drawing& d, std::vector<FormPart>& to, const CardControl& control, const Box& box) {
  d.Add(to, d.Bound("QRNCheck", control.control, box))
      .Text("Caption", Shown(d.plan.table.fields[control.field].name))
      .Text("DbField", d.plan.table.fields[control.field].name);
}

void DrawDisplay(Drawing& d, std::vector<FormPart>& to, const CardControl& control,
                 const Box& box) {
  FormPart& part = d.Add(to, FormPart("VB.TextBox", control.control, box));
  part.Font()
      .Colour("BackColor", kButtonFace)
      .Truth("Locked", true)
      .Text("ToolTipText", d.words[Word::Display]);
  if (control.fit.isNumber) {
    part.Number("Alignment", 1);
  } else {
    part.Truth("MultiLine", true).Number("ScrollBars", 2);
  }
}

void DrawPicture(Drawing& d, std::vector<FormPart>& to, const CardControl& control,
                 const Box& box) {
  DrawEdit(d, to, control, {box.left, box.top, box.width, kBoxHeight});
  const int top = box.top + kBoxHeight + kGap;
  const Box frame{box.left, top, std::min(box.width, kPictureWidth), box.Bottom() - top};
  FormPart& part = d.Add(to, d.Bound("QRNPic", control.picture, frame));
  part.Text("DbField", d.plan.table.fields[control.field].name).Truth("Stretch", true);
  if (!d.plan.choice.pictures.empty()) part.Text("BlobPath", d.plan.choice.pictures);
}

void DrawCombo(Drawing& d, std::vector<FormPart>& to, const CardControl& control, const Box& box) {
  const Lookup& lookup = *control.lookup;
  const Table& other = d.plan.dictionary.tables[lookup.table];
  const int wanted = control.fit.characters * kDigit + kBoxMargin + kArrow;
  const int width = std::min(std::max(wanted, 44), box.width);
  d.Add(to, d.Bound("QRNComboBox", control.control, {box.left, box.top, width, box.height}))
      .Text("DbField", d.plan.table.fields[control.field].name)
      .Text("DbListField", other.fields[lookup.field].name)
      .Text("DbListIndex", other.keys[lookup.key].name)
      .Text("DbListSource", kDatabase)
      .Text("DbListTable", other.name)
      .Number("DbUpdateOption", 1)
      .Number("IMEMode", control.fit.imeMode)
      .Number("Style", 0);
  if (control.said.empty()) return;
  const int left = box.left + width + kGap;
  d.Add(to, FormPart("VB.Label", control.said,
                     {left, box.top + kLabelDrop, std::max(box.Right() - left, 1), kLabelHeight}))
      .Text("Caption", "")
      .Truth("UseMnemonic", false);
}

struct Drawer {
  Control control;
  void (*draw)(Drawing& d, std::vector<FormPart>& to, const CardControl& control, const Box& box);
};

// Of a field that another table is looked up for, the kind counts as none.
constexpr Drawer kDrawers[] = {
    {Control::None, DrawCombo},  {Control::Edit, DrawEdit},       {Control::Note, DrawEdit},
    {Control::Check, DrawCheck}, {Control::Picture, DrawPicture}, {Control::Display, DrawDisplay},
};

}  // namespace

FormPart& Drawing::Add(std::vector<FormPart>& to, FormPart part) {
  part.Number("TabIndex", tabIndex++);
  to.push_back(std::move(part));
  return to.back();
}

FormPart Drawing::Bound(const char* kind, const std::string& name, const Box& box,
                        int index) const {
  FormPart part(std::string("QRNBTRLib.") + kind, name, box, index);
  part.Text("DbSource", kDatabase).Text("DbTable", plan.table.name).Font();
  return part;
}

void DrawField(Drawing& d, std::vector<FormPart>& to, const CardControl& control,
               const CardPlace& place, int left, int top) {
  const Box box{left + place.left, top + place.top, place.width, place.height};
  if (!control.label.empty()) {
    const int width = place.left - place.label - 4;
    d.Add(to, FormPart("VB.Label", control.label,
                       {left + place.label, box.top + kLabelDrop, width, kLabelHeight}))
        .Text("Caption", Shown(d.plan.table.fields[control.field].name));
  }
  const Control kind = control.lookup ? Control::None : control.fit.control;
  const auto* row = std::find_if(std::begin(kDrawers), std::end(kDrawers),
                                 [kind](const Drawer& drawer) { return drawer.control == kind; });
  row->draw(d, to, control, box);
}

}  // namespace qrn::newform
