// The flat interface on a form: it is attached to a database control, works on that control's
// dictionary from then on, and moves records to and from the form's controls.
#include <string>

#include "binding/registry/ControlRegistry.h"
#include "binding/registry/TableTransfer.h"
#include "core/FlatGuard.h"
#include "core/MemoryFailure.h"
#include "platform/CodePage.h"
#include "qrnbt350.h"

namespace qrn::flat {
namespace {

const char* OrEmpty(const char* text) { return text != nullptr ? text : ""; }

// The exports' twin of the guard of interface methods.
template <class Body>
int32_t Guarded(Body body) noexcept {
  try {
    return OrNoMemory(body);
  } catch (...) {
    return kFailure;
  }
}

// The first control that `fits`; the container is asked in there, so that it is looked for on a
// walk that bears changes.
template <class Fits>
DataControl* FindControl(const char* name, Fits fits) {
  DataControl* found = nullptr;
  TheRegistry().WalkDataControls([&](const DataControlEntry& entry) {
    if (found != nullptr || !EqualIgnoringCase(entry.Name, OrEmpty(name))) return;
    DataControl* control = entry.Control;
    if (fits(entry)) found = control;
  });
  return found;
}

Status AttachTo(DataControl* control, const char* name) {
  if (control == nullptr) return kNoControl;
  DbDictionary* dictionary = control->GetDictionary();
  if (dictionary == nullptr) return kControlHasNoDictionary;
  AttachFlatState(*control, dictionary, OrEmpty(name));
  return kSuccess;
}

// The table as long as it is the open one of that id.
TableFinder FinderOf(int16_t tableId) {
  return [tableId]() -> DbTableInfo* {
    const CheckedTable found = FindOpenTable(tableId);
    return found.failure == 0 ? found.table : nullptr;
  };
}

int32_t WithAttached(int16_t tableId, int32_t (*transfer)(CQuorin&, TableFinder)) noexcept {
  return OnOpenTable(tableId, [&](DbTableInfo&) -> int32_t {
    AttachedDatabase* attached = TheFlatState().AttachedControl;
    if (attached == nullptr) return kNoDictionary;
    return Guarded([&]() -> Status {
      return transfer(static_cast<DataControl&>(*attached), FinderOf(tableId));
    });
  });
}

}  // namespace

extern "C" {

// The name goes without case, the form's exactly. When the container does not tell its window
// (VE808 to VE811) the attachment stands all the same; of a failure before that nothing.
int32_t DbAttachControl(const char* name, const char* formName) noexcept {
  return Guarded([&]() -> Status {
    DataControl* control = FindControl(name, [&](const DataControlEntry& entry) {
      return entry.Control->AskFormName() == OrEmpty(formName);
    });
    if (const Status failure = AttachTo(control, name); failure != 0) return failure;
    const std::optional<WindowHandle> window = control->AskFormWindow();
    if (!window) return kFailure;
    TheFlatState().FormWindow = *window;
    return kSuccess;
  });
}

// On the form of a window, or of its parent. The form's window kept by the other attach stays.
int32_t DbAttachControlByHwnd(const char* name, void* window) noexcept {
  return Guarded([&]() -> Status {
    return AttachTo(
        FindControl(
            name, [&](const DataControlEntry& entry) { return IsFormOf(entry.Container, window); }),
        name);
  });
}

int32_t DbTransferToControl(int16_t tableId) noexcept {
  return WithAttached(tableId, TransferToControls);
}
int32_t DbTransferFromControl(int16_t tableId) noexcept {
  return WithAttached(tableId, TransferFromControls);
}
int32_t DbClearControlData(int16_t tableId) noexcept {
  return WithAttached(tableId, ClearControls);
}

}  // extern "C"

}  // namespace qrn::flat
