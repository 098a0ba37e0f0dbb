#include "binding/registry/ControlRegistry.h"

#include "fields/Messages.h"
#include "platform/CodePage.h"

namespace qrn {
namespace {

constexpr char kSourceName[] = "qrnutil";

// Runs what may find no memory.
template <class Body>
int32_t WithMemory(int line, Body body) noexcept {
  try {
    return body();
  } catch (const std::bad_alloc&) {
    ShowMessage(kVE001, kSourceName, line);
    return -1;
  }
}

// The former control is destroyed when the entry is the new one's already: leaving, it finds none.
template <class Entry, class Control>
void TakeOver(Entry& entry, Control& control) {
  Control* former = std::exchange(entry.Control, &control);
  if (former != &control) former->Destroy();
}

// A control that has an entry of its own on this form keeps it, whatever it is called now.
template <class Entry, class Control, class Same>
int32_t Enter(EntryList<Entry>& list, Entry entry, Control& control, Same same) {
  Entry* present = list.Find(same);
  if (present == nullptr) {
    list.Remove(&control);
    list.Append(std::move(entry));
    return 0;
  }
  if (present->Control != &control && list.Remove(&control)) present = list.Find(same);
  TakeOver(*present, control);
  return 0;
}

// Controls without a name cannot be told apart, so that none is another made anew.
bool SameName(const std::string& left, const std::string& right) {
  return !left.empty() && left == right;
}

std::string OrEmpty(NullableText text) { return std::move(text).value_or(std::string()); }

ListControlEntry ListEntryOf(CQuorin& control) {
  return {control.GetContainerWindow(),     control.GetDbSourceRef(),
          control.GetControlName(),         OrEmpty(control.GetBoundField()),
          OrEmpty(control.GetBoundTable()), &control};
}

NavControlEntry NavEntryOf(CQuorin& control) {
  return {control.GetDbTableRef(), control.GetControlName(), &control,
          control.GetContainerWindow()};
}

template <class Entry, class Control>
int32_t Leave(EntryList<Entry>& list, const Control& control) {
  return list.Remove(&control) ? 0 : -1;
}

// Whether two entries with `Container` and `Name` are the same control made anew.
template <class Entry>
auto SamePlaceAs(const Entry& entry) {
  return [&entry](const Entry& other) {
    return other.Container == entry.Container && SameName(other.Name, entry.Name);
  };
}

}  // namespace

bool IsFormOf(WindowHandle container, WindowHandle window) noexcept {
  return container != nullptr && window != nullptr &&
         (container == window || container == ParentOfWindow(window));
}

int32_t ControlRegistry::RegisterDataControl(DataControl& control) noexcept {
  return WithMemory(__LINE__, [&] {
    DataControlEntry entry{control.GetControlName(), control.GetContainerWindow(), &control};
    if (entry.Container == nullptr) return 0;
    return Enter(dataControls_, entry, control, SamePlaceAs(entry));
  });
}

int32_t ControlRegistry::RegisterFieldControl(CQuorin& control) noexcept {
  return WithMemory(__LINE__, [&] {
    NullableText field = control.GetBoundField();
    NullableText table = control.GetBoundTable();
    if (!field || !table) return 0;
    const std::string name = control.GetControlName();
    const WindowHandle container = control.GetContainerWindow();
    FieldControlEntry entry{*std::move(field), *std::move(table), &control};
    return Enter(fieldControls_, std::move(entry), control, [&](const FieldControlEntry& other) {
      return other.Control == &control || (SameName(other.Control->GetControlName(), name) &&
                                           other.Control->GetContainerWindow() == container);
    });
  });
}

int32_t ControlRegistry::RegisterListControl(CQuorin& control) noexcept {
  return WithMemory(__LINE__, [&] {
    ListControlEntry entry = ListEntryOf(control);
    return Enter(listControls_, entry, control, SamePlaceAs(entry));
  });
}

int32_t ControlRegistry::RegisterNavControl(CQuorin& control) noexcept {
  return WithMemory(__LINE__, [&] {
    NavControlEntry entry = NavEntryOf(control);
    return Enter(navControls_, entry, control, SamePlaceAs(entry));
  });
}

int32_t ControlRegistry::UnregisterDataControl(const DataControl& control) noexcept {
  return Leave(dataControls_, control);
}
int32_t ControlRegistry::UnregisterFieldControl(const CQuorin& control) noexcept {
  return Leave(fieldControls_, control);
}
int32_t ControlRegistry::UnregisterListControl(const CQuorin& control) noexcept {
  return Leave(listControls_, control);
}
int32_t ControlRegistry::UnregisterNavControl(const CQuorin& control) noexcept {
  return Leave(navControls_, control);
}

int32_t ControlRegistry::RefreshListEntry(CQuorin& control) noexcept {
  return WithMemory(__LINE__, [&] { return listControls_.Replace(ListEntryOf(control)) ? 0 : -1; });
}

int32_t ControlRegistry::RefreshNavEntry(CQuorin& control) noexcept {
  return WithMemory(__LINE__, [&] { return navControls_.Replace(NavEntryOf(control)) ? 0 : -1; });
}

int32_t ControlRegistry::FindDataControlForDir(DataControl*& found,
                                               std::string_view directory) noexcept {
  const auto fits = [directory](const DataControlEntry& entry) {
    return EqualIgnoringCase(entry.Control->DdfDirText(), directory);
  };
  const DataControlEntry* entry = dataControls_.Find([&](const DataControlEntry& each) {
    return each.Control->GetDictionary() != nullptr && fits(each);
  });
  if (entry == nullptr) entry = dataControls_.Find(fits);
  if (entry == nullptr) return -1;
  found = entry->Control;
  return 0;
}

ControlRegistry& TheRegistry() {
  struct Own : ControlRegistry {
    Own() {
      Load();
      UseSettings(*this);
    }
  };
  static Own registry;
  return registry;
}

}  // namespace qrn
