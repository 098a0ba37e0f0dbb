#include "host/runner/furniture/FurnitureLook.h"

#include <algorithm>
#include <stdexcept>

#include "host/container/Fonts.h"
#include "host/container/Text.h"
#include "host/form/SourceText.h"
#include "host/runner/PropertyValues.h"

namespace qrn::host {
namespace {

using form::Property;
using Look = FurnitureLook;

struct PieceProperty {
  unsigned kinds;
  const char* name;
  void (*set)(Look& look, const Property& property);
};

wchar_t FirstCharacter(const Property& property) {
  const std::wstring text = TextOf(property);
  return text.empty() ? L'\0' : text[0];
}

// clang-format off
constexpr PieceProperty kPieceProperties[] = {
    {kLabel | kFrame | kButton, "Caption",   [](Look& l, const Property& p) { l.text = TextOf(p); }},
    {kText,             "Text",         [](Look& l, const Property& p) { l.text = TextOf(p); }},
    {kLabel | kFrame | kButton | kText, "Enabled",
                                        [](Look& l, const Property& p) { l.enabled = TruthOf(p); }},
    {kLabel | kFrame | kButton | kText, "BackColor",
                                        [](Look& l, const Property& p) { l.backColor = OLE_COLOR(WholeOf(p)); }},
    {kLabel | kFrame | kText, "ForeColor", [](Look& l, const Property& p) { l.foreColor = OLE_COLOR(WholeOf(p)); }},
    {kLabel | kText,    "Alignment",    [](Look& l, const Property& p) { l.alignment = TextAlignment(WholeOf(p, 0, 2)); }},
    {kLabel | kFrame | kText, "BorderStyle", [](Look& l, const Property& p) { l.borderStyle = WholeOf(p, 0, 1); }},
    {kLabel | kFrame | kButton | kText, "Appearance",
                                        [](Look& l, const Property& p) { l.sunken = WholeOf(p, 0, 1) == 1; }},
    {kLabel,            "BackStyle",    [](Look& l, const Property& p) { l.transparent = WholeOf(p, 0, 1) == 0; }},
    {kLabel,            "AutoSize",     [](Look& l, const Property& p) { l.autoSize = TruthOf(p); }},
    {kLabel,            "WordWrap",     [](Look& l, const Property& p) { l.wordWrap = TruthOf(p); }},
    {kLabel,            "UseMnemonic",  [](Look& l, const Property& p) { l.useMnemonic = TruthOf(p); }},
    {kButton | kText,   "TabStop",      [](Look& l, const Property& p) { l.tabStop = TruthOf(p); }},
    {kButton,           "Default",      [](Look& l, const Property& p) { l.isDefault = TruthOf(p); }},
    {kButton,           "Cancel",       [](Look& l, const Property& p) { l.isCancel = TruthOf(p); }},
    {kText,             "MultiLine",    [](Look& l, const Property& p) { l.multiLine = TruthOf(p); }},
    {kText,             "Locked",       [](Look& l, const Property& p) { l.locked = TruthOf(p); }},
    {kText,             "HideSelection", [](Look& l, const Property& p) { l.hideSelection = TruthOf(p); }},
    {kText,             "MaxLength",    [](Look& l, const Property& p) { l.maxLength = WholeOf(p, 0, 65535); }},
    {kText,             "PasswordChar", [](Look& l, const Property& p) { l.passwordChar = FirstCharacter(p); }},
    {kText,             "ScrollBars",   [](Look& l, const Property& p) { l.scrollBars = ScrollBars(WholeOf(p, 0, 3)); }},
};
// clang-format on

// Properties without a meaning here.
constexpr const char* kPassedOver[] = {
    "ClipControls", "DataField",       "DataFormat",  "DataMember", "DataSource", "IMEMode",
    "LinkItem",     "LinkMode",        "LinkTimeout", "LinkTopic",  "MouseIcon",  "MousePointer",
    "OLEDragMode",  "OLEDropMode",     "RightToLeft", "Style",      "Picture",    "DownPicture",
    "MaskColor",    "DisabledPicture", "UseMaskColor"};

}  // namespace

FurnitureLook FirstLook(FurnitureKind kind) {
  FurnitureLook look;
  if (kind == kFrame) look.borderStyle = 1;
  if (kind == kText) {
    look.borderStyle = 1;
    look.backColor = 0x80000005;
    look.foreColor = 0x80000008;
  }
  return look;
}

bool TakeProperty(FurnitureKind kind, FurnitureLook& look, const Property& property,
                  CompanionFiles& files) {
  if (IsFontGroup(property)) return look.font = MakeFont(property), true;
  if (const auto* place = std::get_if<form::FileReference>(&property.value);
      place && (place->isText || form::SameWord(property.name, "Text"))) {
    look.text = Wide(files.Text(*place));
    return true;
  }
  for (const PieceProperty& row : kPieceProperties) {
    if ((row.kinds & kind) == 0 || !form::SameWord(row.name, property.name)) continue;
    row.set(look, property);
    return true;
  }
  return std::any_of(std::begin(kPassedOver), std::end(kPassedOver),
                     [&](const char* name) { return form::SameWord(name, property.name); });
}

}  // namespace qrn::host
