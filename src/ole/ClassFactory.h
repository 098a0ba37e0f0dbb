// Class objects of the module: one factory serves any class of a table.
#pragma once

#include <unknwn.h>

#include <new>
#include <span>

#include "ole/Kit.h"
#include "ole/tables/Members.h"

namespace qrn::ole {

// A class that can be made: its id, how an object of it is made, inside `aggregator` if given, and
// the resource id of the script that registers it.
struct ClassRow {
  Guid classId;
  HRESULT (*create)(IUnknown* aggregator, REFIID id, void** out);
  uint16_t script = 0;
};

// The class object for `classId`; CLASS_E_CLASSNOTAVAILABLE where no row has it.
HRESULT GetClassObject(std::span<const ClassRow> classes, REFCLSID classId, REFIID id,
                       void** out) noexcept;

// Makes a control of class C. An aggregator may ask for IUnknown alone, which is then the inner
// one.
template <class C>
HRESULT CreateControl(IUnknown* aggregator, REFIID id, void** out) {
  if (!out) return E_POINTER;
  *out = nullptr;
  if (aggregator && id != __uuidof(IUnknown)) return CLASS_E_NOAGGREGATION;
  return Guard([&] {
    auto* control = new C;
    const auto created = Com<IUnknown>::Take(&control->Inner());
    control->BePartOf(aggregator);
    return control->Inner().QueryInterface(id, out);
  });
}

// The row of control class C, whose rows are `Table`.
template <const ControlTable& Table, class C>
constexpr ClassRow ControlRow() {
  return {Table.classId, &CreateControl<C>, Table.registration.script};
}

}  // namespace qrn::ole
