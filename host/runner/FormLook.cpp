#include "host/runner/FormLook.h"

#include <algorithm>
#include <stdexcept>

#include "host/form/SourceText.h"
#include "host/runner/PropertyValues.h"

namespace qrn::host {
namespace {

using form::Property;

constexpr int kTwipScale = 1;
constexpr int kPixelScale = 3;

bool PixelScaleOf(const Property& property) {
  const int mode = WholeOf(property);
  if (mode == kTwipScale || mode == kPixelScale) return mode == kPixelScale;
  throw std::runtime_error("only ScaleMode 1 (twips) and 3 (pixels) are known");
}

struct FormProperty {
  const char* name;
  void (*set)(FormLook& look, const Property& property);
};

// clang-format off
constexpr FormProperty kFormProperties[] = {
    {"Caption",         [](FormLook& f, const Property& p) { f.caption = TextOf(p); }},
    {"Tag",             [](FormLook& f, const Property& p) { f.tag = TextOf(p); }},
    {"ClientLeft",      [](FormLook& f, const Property& p) { f.client.left = NumberOf(p); }},
    {"ClientTop",       [](FormLook& f, const Property& p) { f.client.top = NumberOf(p); }},
    {"ClientWidth",     [](FormLook& f, const Property& p) { f.client.width = NumberOf(p); }},
    {"ClientHeight",    [](FormLook& f, const Property& p) { f.client.height = NumberOf(p); }},
    {"BorderStyle",     [](FormLook& f, const Property& p) { f.border = FormBorder(WholeOf(p, 0, 5)); }},
    {"StartUpPosition", [](FormLook& f, const Property& p) { f.start = StartPosition(WholeOf(p, 0, 3)); }},
    {"BackColor",       [](FormLook& f, const Property& p) { f.backColor = OLE_COLOR(WholeOf(p)); }},
    {"ForeColor",       [](FormLook& f, const Property& p) { f.foreColor = OLE_COLOR(WholeOf(p)); }},
    {"ControlBox",      [](FormLook& f, const Property& p) { f.controlBox = TruthOf(p); }},
    {"MaxButton",       [](FormLook& f, const Property& p) { f.maxButton = TruthOf(p); }},
    {"MinButton",       [](FormLook& f, const Property& p) { f.minButton = TruthOf(p); }},
    {"ShowInTaskbar",   [](FormLook& f, const Property& p) { f.showInTaskbar = TruthOf(p); }},
    {"Enabled",         [](FormLook& f, const Property& p) { f.enabled = TruthOf(p); }},
    {"KeyPreview",      [](FormLook& f, const Property& p) { f.keyPreview = TruthOf(p); }},
    {"WindowState",     [](FormLook& f, const Property& p) { f.windowState = WholeOf(p, 0, 2); }},
    {"MousePointer",    [](FormLook& f, const Property& p) { f.mousePointer = WholeOf(p, 0, 99); }},
    {"ScaleMode",       [](FormLook& f, const Property& p) { f.pixelScale = PixelScaleOf(p); }},
};
// clang-format on

constexpr const char* kIdleFormProperties[] = {"ScaleLeft",
                                               "ScaleTop",
                                               "ScaleWidth",
                                               "ScaleHeight",
                                               "LinkTopic",
                                               "LinkMode",
                                               "LockControls",
                                               "AutoRedraw",
                                               "ClipControls",
                                               "Appearance",
                                               "DrawMode",
                                               "DrawStyle",
                                               "DrawWidth",
                                               "FillColor",
                                               "FillStyle",
                                               "FontTransparent",
                                               "HelpContextID",
                                               "MDIChild",
                                               "Moveable",
                                               "NegotiateMenus",
                                               "OLEDropMode",
                                               "Palette",
                                               "PaletteMode",
                                               "Picture",
                                               "RightToLeft",
                                               "Visible",
                                               "WhatsThisButton",
                                               "WhatsThisHelp",
                                               "MouseIcon",
                                               "Left",
                                               "Top",
                                               "Width",
                                               "Height",
                                               "HasDC"};

void Set(FormLook& look, const Property& property, CompanionFiles& files) {
  if (IsFontGroup(property)) {
    look.font = MakeFont(property);
    return;
  }
  if (form::SameWord(property.name, "Icon")) {
    if (const auto* place = std::get_if<form::FileReference>(&property.value)) {
      look.icon = files.Picture(*place);
    }
    return;
  }
  for (const FormProperty& row : kFormProperties) {
    if (form::SameWord(row.name, property.name)) return row.set(look, property);
  }
  const bool known =
      std::any_of(std::begin(kIdleFormProperties), std::end(kIdleFormProperties),
                  [&](const char* name) { return form::SameWord(name, property.name); });
  if (!known) throw std::runtime_error("a form has no property " + property.name);
}

}  // namespace

FormLook ReadFormLook(const form::ControlNode& node, CompanionFiles& files,
                      form::Mistakes& mistakes) {
  FormLook look;
  look.caption = L"";
  for (const Property& property : node.properties) {
    try {
      Set(look, property, files);
    } catch (const std::runtime_error& error) {
      mistakes.Add(property.line, error.what());
    }
  }
  if (!look.font) look.font = DefaultFont();
  look.client.width = std::clamp(look.client.width, 0.0, 480000.0);
  look.client.height = std::clamp(look.client.height, 0.0, 480000.0);
  return look;
}

}  // namespace qrn::host
