// The names by which a control finds its data, each piece taken by deriving:
//
//   class CQRNBtn final : public TableBound<BoundControl<ole::VisibleControl>> { ... };
//   class CQRNCheck final : public FieldBound<MarkFace> { ... };
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

// One field of the table, shown by a control of that face (binding/BoundFaces.h). Registered at run
// time as long as its window exists.
template <class Face>
class FieldBound : public TableBound<BoundControl<ole::VisibleControl, Face>> {
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

 protected:
  void OnRegister() override { TheRegistry().RegisterFieldControl(*this); }
  void OnUnregister() override { TheRegistry().UnregisterFieldControl(*this); }
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
