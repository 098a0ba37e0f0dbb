// The flat interface on a form: it is attached to a database control, works on that control's
// dictionary from then on, and moves records to and from the form's controls. As in
// core/FlatInterface.h, results are 0 or a negative code; a null text counts as empty.
#pragma once

#include <cstdint>

#include "platform/WindowText.h"

namespace qrn::flat {

// Attaches to the database control of that name (letters A to Z without case) on the form of that
// name (exactly). -11 without one, -20 when it has no dictionary, both with the attachment left as
// it is; -1 when the container does not tell its window (VE808 to VE811): the attachment stands.
int32_t DbAttachControl(const char* name, const char* formName) noexcept;

// The same on the form of a window, or of its parent. The form's window kept by the other attach
// stays.
int32_t DbAttachControlByHwnd(const char* name, WindowHandle window) noexcept;

// The table's record to and from the controls of the attached control's form. -12 without a
// dictionary or an attached control, -15, -3 as everywhere.
int32_t DbTransferToControl(int16_t tableId) noexcept;
int32_t DbTransferFromControl(int16_t tableId) noexcept;
int32_t DbClearControlData(int16_t tableId) noexcept;

}  // namespace qrn::flat
