#include "host/designer/classes/FreshControl.h"

#include <ocidl.h>
#include <oleidl.h>

#include <algorithm>

#include "host/container/Text.h"
#include "host/designer/classes/PlainValue.h"
#include "host/designer/classes/SavedState.h"
#include "host/form/SourceText.h"

namespace qrn::designer {
namespace {

using host::Com;
using host::Query;
using host::Utf8;
using host::Variant;

constexpr double kTwipsPerHimetric = 1440.0 / 2540.0;

using Lines = std::vector<form::Property>;

form::Property Line(const char* name, int32_t number) { return {name, 0, number, false, {}, {}}; }

// What Visual Basic writes beside a control's own lines.
Lines ContainersLines(const SIZEL& himetric) {
  constexpr int32_t kVersion = 65537;
  return {Line("_ExtentX", himetric.cx), Line("_ExtentY", himetric.cy), Line("_Version", kVersion)};
}

void AskLines(const Com<IUnknown>& control, ClassInfo* info) {
  const Com<IPersistPropertyBag> persist = Query<IPersistPropertyBag>(control.get());
  if (!persist || FAILED(persist->InitNew())) return;
  const Lines own = PlainLinesOf(control.get());
  const Com<IOleObject> object = Query<IOleObject>(control.get());
  SIZEL himetric{};
  if (object && SUCCEEDED(object->GetExtent(DVASPECT_CONTENT, &himetric))) {
    info->firstProperties = ContainersLines(himetric);
  }
  info->firstProperties.insert(info->firstProperties.end(), own.begin(), own.end());
}

bool IsSaved(const ClassInfo& info, const std::string& name) {
  return std::any_of(
      info.firstProperties.begin(), info.firstProperties.end(),
      [&](const form::Property& property) { return form::SameWord(property.name, name); });
}

void AskValues(const Com<IUnknown>& control, ClassInfo* info) {
  const Com<IDispatch> dispatch = Query<IDispatch>(control.get());
  for (PropertyInfo& property : info->properties) {
    if (!dispatch || IsSaved(*info, property.name)) continue;
    std::wstring name = host::Wide(property.name);
    LPOLESTR names = name.data();
    DISPID id = 0;
    if (FAILED(dispatch->GetIDsOfNames(IID_NULL, &names, 1, 0, &id))) continue;
    DISPPARAMS none{};
    Variant value;
    if (SUCCEEDED(dispatch->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, value.put(),
                                   nullptr, nullptr))) {
      property.initial = PlainValue(*value.get());
    }
  }
}

bool Put(IDispatch* dispatch, const std::string& property, const char* text) {
  std::wstring name = host::Wide(property);
  LPOLESTR names = name.data();
  DISPID id = 0;
  DISPID put = DISPID_PROPERTYPUT;
  Variant value(host::MakeBstr(text));
  DISPPARAMS parameters{value.get(), &put, 1, 1};
  return SUCCEEDED(dispatch->GetIDsOfNames(IID_NULL, &names, 1, 0, &id)) &&
         SUCCEEDED(dispatch->Invoke(id, IID_NULL, 0, DISPATCH_PROPERTYPUT, &parameters, nullptr,
                                    nullptr, nullptr));
}

// The line that holds this text; empty if none does.
std::string LineWith(const Lines& lines, const std::string& text) {
  for (const form::Property& line : lines) {
    const std::string* value = std::get_if<std::string>(&line.value);
    if (value && *value == text) return line.name;
  }
  return {};
}

// Some controls save a text under another name than the property's: a text that nothing else has
// is put there, and looked for among what is saved.
void AskSavedNames(const Com<IUnknown>& control, ClassInfo* info) {
  constexpr char kProbe[] = "qrn probe";
  const Com<IPersistPropertyBag> persist = Query<IPersistPropertyBag>(control.get());
  const Com<IDispatch> dispatch = Query<IDispatch>(control.get());
  for (PropertyInfo& property : info->properties) {
    const bool asks = property.kind == PropertyKind::Text && property.offer != Offer::None &&
                      !property.readOnly && !IsSaved(*info, property.name);
    if (!asks || !persist || !dispatch || !Put(dispatch.get(), property.name, kProbe)) continue;
    property.savedName = LineWith(PlainLinesOf(control.get()), kProbe);
    if (!property.savedName.empty()) property.initial.reset();
    Put(dispatch.get(), property.name, "");
  }
}

void AskSize(const Com<IUnknown>& control, ClassInfo* info) {
  const Com<IOleObject> object = Query<IOleObject>(control.get());
  if (!object) return;
  SIZEL himetric{};
  if (SUCCEEDED(object->GetExtent(DVASPECT_CONTENT, &himetric)) && himetric.cx > 0) {
    info->width = static_cast<int32_t>(himetric.cx * kTwipsPerHimetric + 0.5);
    info->height = static_cast<int32_t>(himetric.cy * kTwipsPerHimetric + 0.5);
  }
  DWORD status = 0;
  object->GetMiscStatus(DVASPECT_CONTENT, &status);
  info->hasSize = (status & OLEMISC_INVISIBLEATRUNTIME) == 0;
  info->holdsOthers = (status & OLEMISC_SIMPLEFRAME) != 0;
}

}  // namespace

void AskFreshControl(const Com<IUnknown>& control, ClassInfo* info) {
  AskLines(control, info);
  AskValues(control, info);
  AskSavedNames(control, info);
  AskSize(control, info);
}

}  // namespace qrn::designer
