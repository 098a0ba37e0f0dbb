#include "host/container/Ambients.h"

namespace qrn::host {
namespace {

constexpr int kCodePage = 932;
constexpr short kShiftJisCharset = 128;
constexpr short kThreeDimensional = 1;

Variant Colour(OLE_COLOR colour) { return Variant(static_cast<int32_t>(colour)); }
Variant Truth(bool truth) { return Variant::Bool(truth); }

struct AmbientRow {
  DISPID id;
  Variant (*value)(const AmbientValues& ambients);
};

// clang-format off
constexpr AmbientRow kAmbientRows[] = {
    {DISPID_AMBIENT_BACKCOLOR,         [](const AmbientValues& a) { return Colour(a.backColor); }},
    {DISPID_AMBIENT_DISPLAYNAME,       [](const AmbientValues& a) { return Variant(Bstr(a.displayName)); }},
    {DISPID_AMBIENT_FONT,              [](const AmbientValues& a) { return Variant(Com<IDispatch>(a.font.get())); }},
    {DISPID_AMBIENT_FORECOLOR,         [](const AmbientValues& a) { return Colour(a.foreColor); }},
    {DISPID_AMBIENT_LOCALEID,          [](const AmbientValues& a) { return Variant(static_cast<int32_t>(a.locale)); }},
    {DISPID_AMBIENT_MESSAGEREFLECT,    [](const AmbientValues&) { return Truth(false); }},
    {DISPID_AMBIENT_SCALEUNITS,        [](const AmbientValues& a) { return Variant(Bstr(a.scaleUnits)); }},
    {DISPID_AMBIENT_TEXTALIGN,         [](const AmbientValues&) { return Variant(int16_t{0}); }},
    {DISPID_AMBIENT_USERMODE,          [](const AmbientValues& a) { return Truth(a.userMode); }},
    {DISPID_AMBIENT_UIDEAD,            [](const AmbientValues&) { return Truth(false); }},
    {DISPID_AMBIENT_SHOWGRABHANDLES,   [](const AmbientValues&) { return Truth(false); }},
    {DISPID_AMBIENT_SHOWHATCHING,      [](const AmbientValues&) { return Truth(false); }},
    {DISPID_AMBIENT_DISPLAYASDEFAULT,  [](const AmbientValues& a) { return Truth(a.displayAsDefault); }},
    {DISPID_AMBIENT_SUPPORTSMNEMONICS, [](const AmbientValues&) { return Truth(true); }},
    {DISPID_AMBIENT_AUTOCLIP,          [](const AmbientValues&) { return Truth(true); }},
    {DISPID_AMBIENT_APPEARANCE,        [](const AmbientValues&) { return Variant(kThreeDimensional); }},
    {DISPID_AMBIENT_CODEPAGE,          [](const AmbientValues&) { return Variant(int32_t{kCodePage}); }},
    {DISPID_AMBIENT_CHARSET,           [](const AmbientValues&) { return Variant(kShiftJisCharset); }},
    {DISPID_AMBIENT_RIGHTTOLEFT,       [](const AmbientValues&) { return Truth(false); }},
};
// clang-format on

}  // namespace

HRESULT AmbientValue(const AmbientValues& ambients, DISPID id, VARIANT* value) noexcept {
  if (!value) return E_POINTER;
  return Guard([&]() -> HRESULT {
    for (const AmbientRow& row : kAmbientRows) {
      if (row.id != id) continue;
      *value = row.value(ambients).release();
      return S_OK;
    }
    return DISP_E_MEMBERNOTFOUND;
  });
}

}  // namespace qrn::host
