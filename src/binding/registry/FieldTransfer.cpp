// One field between its text and the controls that show it.
#include "binding/registry/ControlRegistry.h"
#include "binding/registry/FieldKinds.h"

namespace qrn {
namespace {

// Fields mostly differ in the length or the last letter of their names, which is seen at once.
bool SameEnds(const std::string& left, const std::string& right) {
  return left.size() == right.size() && (left.empty() || left.back() == right.back());
}

// Copies: a handler may end the dictionary that the names come from.
struct FieldNames {
  FieldNames(const DbTableInfo& ofTable, const DbFieldInfo& ofField)
      : table(ofTable.Name), field(ofField.Name) {}

  template <class Entry>
  bool Match(const Entry& entry) const {
    return SameEnds(entry.Field, field) && entry.Field == field && entry.Table == table;
  }

  std::string table;
  std::string field;
};

// Does `act`(control, row of its kind) for each field control of the names, on one form or (null)
// on any.
template <class Act>
void OnFieldControls(EntryList<FieldControlEntry>& list, const FieldNames& names,
                     WindowHandle container, Act act) {
  list.Walk([&](const FieldControlEntry& entry) {
    if (!names.Match(entry)) return;
    CQuorin& control = *entry.Control;
    if (container != nullptr && control.GetContainerWindow() != container) return;
    if (const FieldKind* kind = FieldKindOf(control.GetControlType())) act(control, *kind);
  });
}

template <class Act>
void OnListControls(EntryList<ListControlEntry>& list, const FieldNames& names,
                    WindowHandle container, Act act) {
  list.Walk([&](const ListControlEntry& entry) {
    if (!names.Match(entry) || entry.Container != container) return;
    CQuorin& control = *entry.Control;
    if (const FieldKind* kind = ListKindOf(control.GetControlType())) act(control, *kind);
  });
}

}  // namespace

int32_t ControlRegistry::ReadControlField(WindowHandle container, const DbTableInfo& table,
                                          const DbFieldInfo& field, std::string& text) {
  if (container == nullptr) return 0;
  const FieldNames names(table, field);
  int32_t count = 0;
  const auto read = [&](CQuorin& control, const FieldKind& kind) {
    std::string found;
    if (kind.read == nullptr || !kind.read(control, found)) return;
    text = std::move(found);
    ++count;
  };
  OnFieldControls(fieldControls_, names, container, read);
  OnListControls(listControls_, names, container, read);
  return count;
}

void ControlRegistry::WriteControlField(WindowHandle container, const DbTableInfo& table,
                                        const DbFieldInfo& field, const char* text) {
  if (container == nullptr) return;
  const FieldNames names(table, field);
  const auto write = [&](CQuorin& control, const FieldKind& kind) {
    kind.write(control, IsAlive(table) ? &table : nullptr, text);
  };
  OnFieldControls(fieldControls_, names, container, write);
  OnListControls(listControls_, names, container, write);
}

void ControlRegistry::ClearControlField(WindowHandle container, const DbTableInfo& table,
                                        const DbFieldInfo& field) {
  const FieldNames names(table, field);
  const auto clear = [](CQuorin& control, const FieldKind& kind) {
    if (kind.clear != nullptr) kind.clear(control);
  };
  OnFieldControls(fieldControls_, names, nullptr, clear);
  if (container != nullptr) OnListControls(listControls_, names, container, clear);
}

}  // namespace qrn
