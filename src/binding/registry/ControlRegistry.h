// The controls of all running forms, and who of them is bound to what. A bound control holds no
// pointer to its database control: at every use it asks here to turn its form, the name of its
// source and the name of its table into the table, so that the order in which a form's controls
// come to life does not matter. Nothing is cached.
//
// One object for the process, which is its settings too. It owns its entries, not the controls: a
// control registers when its window is made at run time and leaves when it is destroyed. One
// thread; handlers of the application may change the lists during any walk that raises events.
//
// Names are code page 932 bytes and compare exactly. A control lies on the form of a window when
// its container is that window or the window's parent.
#pragma once

#include <string>
#include <string_view>

#include "binding/registry/DataControl.h"
#include "binding/registry/EntryList.h"
#include "core/DbEngine.h"
#include "fields/QuorinSettings.h"

namespace qrn {

// Two names in short. Fields mostly differ in the length or an end of their names.
inline uint32_t TagOfNames(std::string_view field, std::string_view table) noexcept {
  const auto brief = [](std::string_view name) {
    if (name.empty()) return uint32_t{0};
    const auto first = static_cast<uint8_t>(name.front());
    const auto last = static_cast<uint8_t>(name.back());
    return static_cast<uint32_t>(name.size()) ^ uint32_t { last } << 5 ^ uint32_t { first } << 10;
  };
  return brief(field) ^ brief(table) << 14;
}

struct DataControlEntry {
  static uint32_t Tag() noexcept { return 0; }

  std::string Name;
  WindowHandle Container;
  DataControl* Control;
};

// Both names as they were when the control's window was made.
struct FieldControlEntry {
  uint32_t Tag() const noexcept { return TagOfNames(Field, Table); }

  std::string Field;
  std::string Table;
  CQuorin* Control;
};

struct ListControlEntry {
  uint32_t Tag() const noexcept { return TagOfNames(Field, Table); }

  WindowHandle Container;
  std::string Source;
  std::string Name;
  std::string Field;
  std::string Table;
  CQuorin* Control;
};

struct NavControlEntry {
  static uint32_t Tag() noexcept { return 0; }

  std::string Source;
  std::string Name;
  CQuorin* Control;
  WindowHandle Container;
};

class ControlRegistry : public QuorinSettings {
 public:
  // All give 0; -1 after VE001 without memory, the control unregistered. A control whose name (not
  // an empty one) and form are those of a registered one is that control made anew: it takes over
  // the entry, names included, and the former control is destroyed. A field control with a null
  // name is ignored, and so is a database control without a form.
  int32_t RegisterDataControl(DataControl& control) noexcept;
  int32_t RegisterFieldControl(CQuorin& control) noexcept;
  int32_t RegisterListControl(CQuorin& control) noexcept;
  int32_t RegisterNavControl(CQuorin& control) noexcept;

  // 0, or -1 when there is no entry of that control: another may have taken its place.
  int32_t UnregisterDataControl(const DataControl& control) noexcept;
  int32_t UnregisterFieldControl(const CQuorin& control) noexcept;
  int32_t UnregisterListControl(const CQuorin& control) noexcept;
  int32_t UnregisterNavControl(const CQuorin& control) noexcept;

  // Reads the names of a control's entry again: 0, -1 without an entry or memory.
  int32_t RefreshListEntry(CQuorin& control) noexcept;
  int32_t RefreshNavEntry(CQuorin& control) noexcept;

  // The table of the database control of that name on the form of `container`. Several of one name
  // are asked in turn, up to one without a dictionary. Null when there is none; otherwise good
  // until a handler of the application runs.
  DbTableInfo* ResolveTable(WindowHandle container, std::string_view source,
                            std::string_view table) const noexcept;

  // A field's type code, -1 if anything is missing.
  int32_t GetFieldType(WindowHandle container, std::string_view source, std::string_view table,
                       std::string_view field) const noexcept;

  // Opens a table for a control that needs it, from the directory, owner name and mode of the
  // database control that it belongs to, and creates its file if there is none. 0, or a status
  // whose message was shown (VE007, VE803); -11 when no such database control has it.
  Status DbOpenOnDemand(DbTableInfo& table, WindowHandle container,
                        std::string_view source) noexcept;

  // A database control of that directory (letters A to Z without case), rather one that has a
  // dictionary: 0, or -1 without any, `found` left alone.
  int32_t FindDataControlForDir(DataControl*& found, std::string_view directory) noexcept;

  // The first database control that `fits`, a predicate on entries; null for none.
  template <class Fits>
  const DataControlEntry* FindDataControl(Fits fits) const {
    return dataControls_.Find(fits);
  }
  template <class Visit>
  void WalkDataControls(Visit visit) {
    dataControls_.Walk(visit);
  }
  template <class Visit>
  void WalkFieldControls(Visit visit) {
    fieldControls_.Walk(visit);
  }

  // The texts of a field on the form of `container`, controls of the field first, lists after them,
  // each in the order of registration. ReadControlField gives how many were read, `text` the last
  // one's. WriteControlField and ClearControlField raise events. Kept so: clearing takes the
  // field's controls of every form, only its lists from this one.
  int32_t ReadControlField(WindowHandle container, const DbTableInfo& table,
                           const DbFieldInfo& field, std::string& text);
  void WriteControlField(WindowHandle container, const DbTableInfo& table, const DbFieldInfo& field,
                         const char* text);
  void ClearControlField(WindowHandle container, const DbTableInfo& table,
                         const DbFieldInfo& field);

  // A database control of that name is ready: list controls of its form fill themselves, scroll
  // bars take their place.
  void NotifyListsReady(const std::string& name, WindowHandle container);
  void NotifyNavReady(const std::string& name, WindowHandle container);

  // A control went to another record: scroll bars of the source follow, but for `excluded`.
  void NotifyPositionChanged(const CQuorin* excluded, const std::string& source,
                             const std::string& table, int32_t indexId);

  // Whether the table is one of a dictionary that still exists.
  bool IsAlive(const DbTableInfo& table) const noexcept;

 private:
  EntryList<DataControlEntry> dataControls_;
  EntryList<FieldControlEntry> fieldControls_;
  EntryList<ListControlEntry> listControls_;
  EntryList<NavControlEntry> navControls_;
};

// True when `container` is the window or its parent.
bool IsFormOf(WindowHandle container, WindowHandle window) noexcept;

// The process's own, made at first use with its settings read. Before the engine is used for the
// first time, so that both have the same settings.
ControlRegistry& TheRegistry();

}  // namespace qrn
