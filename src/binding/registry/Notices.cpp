// What the registry tells controls of others.
#include "binding/registry/ControlRegistry.h"

namespace qrn {

void ControlRegistry::NotifyListsReady(const std::string& name, WindowHandle container) {
  listControls_.Walk([&](const ListControlEntry& entry) {
    if (entry.Source != name || !IsFormOf(entry.Container, container)) return;
    if (entry.Control->GetUpdateOption() > 0) entry.Control->ReloadList();
  });
}

void ControlRegistry::NotifyNavReady(const std::string& name, WindowHandle container) {
  navControls_.Walk([&](const NavControlEntry& entry) {
    if (entry.Source != name || !IsFormOf(entry.Container, container)) return;
    entry.Control->OnDataControlReady();
  });
}

void ControlRegistry::NotifyPositionChanged(const CQuorin* excluded, const std::string& source,
                                            const std::string& table, int32_t indexId) {
  navControls_.Walk([&](const NavControlEntry& entry) {
    if (entry.Control == excluded || entry.Source != source) return;
    entry.Control->OnPositionChanged(table, indexId);
  });
}

}  // namespace qrn
