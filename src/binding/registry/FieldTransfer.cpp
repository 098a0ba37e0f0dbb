// One field between its text and the controls that show it.
#include <cstring>

#include "binding/registry/ControlRegistry.h"
#include "binding/registry/FieldKinds.h"

namespace qrn {
namespace {

// Copies: a handler may end the dictionary that the names come from.
class FieldNames {
 public:
  FieldNames(const DbTableInfo& table, const DbFieldInfo& field) noexcept {
    std::memcpy(table_, table.Name, sizeof table_);
    std::memcpy(field_, field.Name, sizeof field_);
    tableSize_ = std::strlen(table_);
    fieldSize_ = std::strlen(field_);
    tag_ = TagOfNames(Field(), Table());
  }

  uint32_t Tag() const noexcept { return tag_; }

  template <class Entry>
  bool Match(const Entry& entry) const {
    return entry.Field == Field() && entry.Table == Table();
  }

 private:
  std::string_view Field() const noexcept { return {field_, fieldSize_}; }
  std::string_view Table() const noexcept { return {table_, tableSize_}; }

  char table_[sizeof DbTableInfo::Name];
  char field_[sizeof DbFieldInfo::Name];
  size_t tableSize_;
  size_t fieldSize_;
  uint32_t tag_;
};

// Does `act`(control, row of its kind) for each field control of the names, on one form or (null)
// on any.
template <class Act>
void OnFieldControls(EntryList<FieldControlEntry>& list, const FieldNames& names,
                     WindowHandle container, Act act) {
  list.WalkTagged(names.Tag(), [&](const FieldControlEntry& entry) {
    if (!names.Match(entry)) return;
    CQuorin& control = *entry.Control;
    if (container != nullptr && control.GetContainerWindow() != container) return;
    if (const FieldKind* kind = FieldKindOf(control.GetControlType())) act(control, *kind);
  });
}

template <class Act>
void OnListControls(EntryList<ListControlEntry>& list, const FieldNames& names,
                    WindowHandle container, Act act) {
  list.WalkTagged(names.Tag(), [&](const ListControlEntry& entry) {
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
    kind.write(control, table, text);
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
