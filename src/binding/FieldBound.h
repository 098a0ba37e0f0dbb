// The names by which a control finds its data, each piece taken by deriving:
//
//   class CQRNBtn final : public TableBound<BoundControl<ole::VisibleControl>> { ... };
//   class CQRNCheck final : public FieldBound<MarkFace> { ... };
//   class ListControl : public Registered<FieldNamed<ListFace>, kListControls> { ... };
//
// Names are looked up at every use and nothing is kept: what is found is good until a handler of
// the application runs.
#pragma once

#include "binding/BoundControl.h"
#include "binding/registry/ControlRegistry.h"
#include "core/DictionaryLookup.h"
#include "ole/VisibleControl.h"

namespace qrn {

// A database control and a table of its dictionary. `Base` is a BoundControl.
template <class Base>
class TableBound : public Base {
 public:
  using Base::Base;

  com::Bstr DbSource = com::Bstr::Empty();
  com::Bstr DbTable = com::Bstr::Empty();

  NullableText GetBoundTable() override { return NarrowNullable(DbTable); }

  // Null where the names lead nowhere.
  DbTableInfo* ResolveTable() {
    return TheRegistry().ResolveTable(this->GetContainerWindow(), NarrowText(DbSource),
                                      NarrowText(DbTable));
  }
  // Opens the table if it is closed. False when that fails: the message was shown. The open raises
  // events; the table is then to be looked up again.
  bool EnsureOpen(DbTableInfo& table) {
    return table.IsOpen != 0 || TheRegistry().DbOpenOnDemand(table, this->GetContainerWindow(),
                                                             NarrowText(DbSource)) == 0;
  }
};

// One field of the table, shown by a control of that face (binding/BoundFaces.h).
template <class Face>
class FieldNamed : public TableBound<BoundControl<ole::VisibleControl, Face>> {
  using Base = TableBound<BoundControl<ole::VisibleControl, Face>>;

 public:
  using Base::Base;

  com::Bstr DbField = com::Bstr::Empty();

  NullableText GetBoundField() override { return NarrowNullable(DbField); }

  // The field of that name in `table`; null without one.
  const DbFieldInfo* FindField(const DbTableInfo& table) const {
    return DbFieldAt(table, DbFindField(table, NarrowText(DbField).c_str()));
  }
  // The field's type code, -1 where the names lead nowhere.
  int32_t FieldType() {
    return TheRegistry().GetFieldType(this->GetContainerWindow(), NarrowText(this->DbSource),
                                      NarrowText(this->DbTable), NarrowText(DbField));
  }
};

// The registry's lists, each by the two calls that change it.
struct RegistryList {
  int32_t (ControlRegistry::*enter)(CQuorin& control) noexcept;
  int32_t (ControlRegistry::*leave)(const CQuorin& control) noexcept;
};
inline constexpr RegistryList kFieldControls{&ControlRegistry::RegisterFieldControl,
                                             &ControlRegistry::UnregisterFieldControl};
inline constexpr RegistryList kListControls{&ControlRegistry::RegisterListControl,
                                            &ControlRegistry::UnregisterListControl};
inline constexpr RegistryList kNavControls{&ControlRegistry::RegisterNavControl,
                                           &ControlRegistry::UnregisterNavControl};

// Stands in a list of the registry at run time, as long as its window exists. `Base` is a
// BoundControl.
template <class Base, const RegistryList& List>
class Registered : public Base {
 public:
  using Base::Base;

 protected:
  void OnRegister() override { (TheRegistry().*List.enter)(*this); }
  void OnUnregister() override { (TheRegistry().*List.leave)(*this); }
};

template <class Face>
class FieldBound : public Registered<FieldNamed<Face>, kFieldControls> {
 public:
  using Registered<FieldNamed<Face>, kFieldControls>::Registered;
};

// Access to the names, for the bindings of derived controls whose tables give them these ids. What
// a control puts in its own list under the same id goes first.
template <class C>
inline constexpr ole::PropertyEntry kTableAccess[] = {
    {1, ole::Field<&C::DbSource>},
    {2, ole::Field<&C::DbTable>},
};
template <class C>
inline constexpr ole::PropertyEntry kFieldAccess[] = {
    {1, ole::Field<&C::DbSource>},
    {2, ole::Field<&C::DbTable>},
    {3, ole::Field<&C::DbField>},
};

}  // namespace qrn
