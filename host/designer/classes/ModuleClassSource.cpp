#include "host/designer/classes/ModuleClassSource.h"

#include <algorithm>

#include "host/container/Text.h"
#include "host/container/TypeDescriptions.h"
#include "host/container/TypeNames.h"
#include "host/designer/classes/FreshControl.h"
#include "host/designer/classes/TypeInfoReader.h"
#include "host/designer/model/DatabaseClass.h"
#include "host/form/SourceText.h"

namespace qrn::designer {
namespace {

using host::Com;
using host::Utf8;

std::string NameOf(ITypeLib* library) {
  host::Bstr name;
  library->GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr);
  return Utf8(name.view());
}

std::string GuidText(const GUID& id) {
  wchar_t text[40] = L"";
  StringFromGUID2(id, text, 40);
  return Utf8(text);
}

// Every control has the container's properties; its own of the same name come first.
void AddExtender(std::vector<PropertyInfo>* properties) {
  std::vector<PropertyInfo> all;
  for (const PropertyInfo& row : ExtenderProperties()) {
    const bool has = std::any_of(properties->begin(), properties->end(), [&](const auto& own) {
      return form::SameWord(own.name, row.name);
    });
    if (!has) all.push_back(row);
  }
  all.insert(all.end(), properties->begin(), properties->end());
  std::stable_sort(all.begin() + 1, all.end(), [](const auto& a, const auto& b) {
    return form::LowerWord(a.name) < form::LowerWord(b.name);
  });
  *properties = std::move(all);
}

std::unique_ptr<ClassInfo> Read(host::ControlClasses& classes, std::string_view library,
                                std::string_view name) {
  const host::ControlClass found = classes.Find(std::string(library), std::string(name));
  auto info = std::make_unique<ClassInfo>();
  info->library = library;
  info->name = name;
  info->stem = UsersName(name);
  const Com<ITypeInfo> face = host::DefaultInterface(found.type.get());
  const Com<ITypeInfo> events = host::EventsOf(found.type.get());
  if (face) info->properties = ReadProperties(face.get());
  if (events) info->events = ReadEvents(events.get());
  if (events) info->usualEvent = UsualEventOf(events.get(), info->events);
  if (const Com<IUnknown> control = classes.Make(found.id)) AskFreshControl(control, info.get());
  AddExtender(&info->properties);
  return info;
}

bool IsControlClass(ITypeInfo* type) {
  const host::TypeAttributes attributes(type);
  constexpr WORD kNotOffered = TYPEFLAG_FHIDDEN | TYPEFLAG_FRESTRICTED;
  return attributes && attributes->typekind == TKIND_COCLASS &&
         (attributes->wTypeFlags & TYPEFLAG_FCONTROL) != 0 &&
         (attributes->wTypeFlags & kNotOffered) == 0;
}

}  // namespace

const ClassInfo* ModuleClassSource::Find(std::string_view library, std::string_view name) const {
  if (form::SameWord(library, "VB")) return FurnitureClasses::Find(library, name);
  const std::string key = form::LowerWord(library) + "." + form::LowerWord(name);
  const auto [place, isNew] = known_.try_emplace(key);
  if (isNew) {
    try {
      place->second = Read(classes_, library, name);
    } catch (const host::ClassNotFound&) {
      place->second = nullptr;
    }
  }
  return place->second.get();
}

std::optional<form::LibraryReference> ModuleClassSource::Library(std::string_view library) const {
  for (const Com<ITypeLib>& known : classes_.Libraries()) {
    TLIBATTR* attributes = nullptr;
    if (!form::SameWord(NameOf(known.get()), library)) continue;
    if (FAILED(known->GetLibAttr(&attributes))) continue;
    form::LibraryReference reference{GuidText(attributes->guid), attributes->wMajorVerNum,
                                     attributes->wMinorVerNum, classes_.FileOf(known.get()), 0};
    known->ReleaseTLibAttr(attributes);
    return reference;
  }
  return std::nullopt;
}

std::vector<std::string> ModuleClassSource::ControlsOf(std::string_view library) const {
  std::vector<std::string> names;
  for (const Com<ITypeLib>& known : classes_.Libraries()) {
    if (!form::SameWord(NameOf(known.get()), library)) continue;
    for (UINT i = 0; i < known->GetTypeInfoCount(); ++i) {
      Com<ITypeInfo> type;
      if (FAILED(known->GetTypeInfo(i, type.put())) || !IsControlClass(type.get())) continue;
      names.push_back(Utf8(host::NameOf(type.get(), MEMBERID_NIL)));
    }
  }
  return names;
}

}  // namespace qrn::designer
