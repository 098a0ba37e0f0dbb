// What a type library tells of a control: its classes, its events, the constants it offers.
#pragma once

#include <oaidl.h>

#include <map>
#include <string>
#include <vector>

#include "com/Variant.h"
#include "host/container/ComObject.h"

namespace qrn::host {

// The class (coclass) of that name, whatever its case; failing that, the class whose default
// interface is that name with an I before it, which is how a control may be known besides. Empty
// if the library has neither.
Com<ITypeInfo> FindClass(ITypeLib* library, const std::wstring& name);

GUID IdOf(ITypeInfo* type) noexcept;

// The interface that a class is used by; empty if it has none.
Com<ITypeInfo> DefaultInterface(ITypeInfo* controlClass) noexcept;

// The event interface of a class (its default source); empty if it has none.
Com<ITypeInfo> EventsOf(ITypeInfo* controlClass) noexcept;

struct EventInfo {
  DISPID id;
  std::wstring name;
  int parameterCount;
};

std::vector<EventInfo> ListEvents(ITypeInfo* events);

// Every constant of every enumeration of the library, by name. Names keep the library's case.
std::map<std::wstring, com::Variant> ListConstants(ITypeLib* library);

}  // namespace qrn::host
