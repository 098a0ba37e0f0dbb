#include "host/container/TypeNames.h"

#include "host/container/Text.h"
#include "host/container/TypeDescriptions.h"

namespace qrn::host {
namespace {

Com<ITypeInfo> Implemented(ITypeInfo* type, UINT index) noexcept {
  HREFTYPE reference = 0;
  Com<ITypeInfo> implemented;
  if (SUCCEEDED(type->GetRefTypeOfImplType(index, &reference))) {
    type->GetRefTypeInfo(reference, implemented.put());
  }
  return implemented;
}

// The interface of a class whose flags, of those in `mask`, are exactly `wanted`.
Com<ITypeInfo> InterfaceOf(ITypeInfo* controlClass, INT mask, INT wanted) noexcept {
  const TypeAttributes attributes(controlClass);
  if (!attributes) return {};
  for (UINT i = 0; i < attributes->cImplTypes; ++i) {
    INT flags = 0;
    if (FAILED(controlClass->GetImplTypeFlags(i, &flags))) continue;
    if ((flags & mask) == wanted) return Implemented(controlClass, i);
  }
  return {};
}

// Calls `body`(type) for each type of that kind until it gives true.
template <class Body>
void ForEachType(ITypeLib* library, TYPEKIND wanted, Body body) {
  const UINT count = library->GetTypeInfoCount();
  for (UINT i = 0; i < count; ++i) {
    TYPEKIND kind = TKIND_MAX;
    Com<ITypeInfo> type;
    if (FAILED(library->GetTypeInfoType(i, &kind)) || kind != wanted) continue;
    if (SUCCEEDED(library->GetTypeInfo(i, type.put())) && body(type)) return;
  }
}

void AddConstants(ITypeInfo* enumeration, std::map<std::wstring, Variant>& constants) {
  const TypeAttributes attributes(enumeration);
  for (UINT i = 0; attributes && i < attributes->cVars; ++i) {
    const VariableDescription variable(enumeration, i);
    if (!variable || variable->varkind != VAR_CONST) continue;
    Variant value;
    if (FAILED(VariantCopy(value.put(), variable->lpvarValue))) continue;
    constants.insert_or_assign(NameOf(enumeration, variable->memid), std::move(value));
  }
}

}  // namespace

Com<ITypeInfo> DefaultInterface(ITypeInfo* controlClass) noexcept {
  return InterfaceOf(controlClass, IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE,
                     IMPLTYPEFLAG_FDEFAULT);
}

Com<ITypeInfo> FindClass(ITypeLib* library, const std::wstring& name) {
  Com<ITypeInfo> found;
  ForEachType(library, TKIND_COCLASS, [&](const Com<ITypeInfo>& type) {
    if (!SameName(NameOf(type.get(), MEMBERID_NIL), name)) return false;
    found = type;
    return true;
  });
  if (found) return found;
  ForEachType(library, TKIND_COCLASS, [&](const Com<ITypeInfo>& type) {
    const Com<ITypeInfo> face = DefaultInterface(type.get());
    if (!face || !SameName(NameOf(face.get(), MEMBERID_NIL), L"I" + name)) return false;
    found = type;
    return true;
  });
  return found;
}

GUID IdOf(ITypeInfo* type) noexcept {
  const TypeAttributes attributes(type);
  return attributes ? attributes->guid : GUID{};
}

Com<ITypeInfo> EventsOf(ITypeInfo* controlClass) noexcept {
  constexpr INT kSource = IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE;
  return InterfaceOf(controlClass, kSource, kSource);
}

std::vector<EventInfo> ListEvents(ITypeInfo* events) {
  std::vector<EventInfo> list;
  const TypeAttributes attributes(events);
  for (UINT i = 0; attributes && i < attributes->cFuncs; ++i) {
    const FunctionDescription function(events, i);
    // The seven methods of IDispatch stand before the events in some libraries.
    constexpr WORD kHidden = FUNCFLAG_FRESTRICTED;
    if (!function || (function->wFuncFlags & kHidden) != 0) continue;
    list.push_back({function->memid, NameOf(events, function->memid), function->cParams});
  }
  return list;
}

std::map<std::wstring, Variant> ListConstants(ITypeLib* library) {
  std::map<std::wstring, Variant> constants;
  ForEachType(library, TKIND_ENUM, [&](const Com<ITypeInfo>& type) {
    AddConstants(type.get(), constants);
    return false;
  });
  return constants;
}

}  // namespace qrn::host
