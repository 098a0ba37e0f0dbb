// The event by which a control tells of a failure before it shows one.
#pragma once

#include "binding/BoundControl.h"
#include "core/DbTypes.h"
#include "fields/Messages.h"
#include "ole/Names.h"

namespace qrn {

// Raises `BtrieveError` of `Table`, the control's rows. The result is what handlers leave of the
// status: 0 says that they have dealt with it.
template <const ole::ControlTable& Table>
Status TellBtrieveError(ole::Control& control, std::string_view tableName, Status status) {
  const com::Bstr name = WidenToBstr(tableName);
  ole::Fire<Table, "BtrieveError">(control, name.get(), &status);
  return status;
}

// The same, then shows `message` with the status unless a handler has dealt with it.
template <const ole::ControlTable& Table>
void ReportBtrieveError(ole::Control& control, std::string_view tableName, Status status,
                        MessageId message) {
  const Status left = TellBtrieveError<Table>(control, tableName, status);
  if (left != 0) ShowMessage(message, static_cast<int>(left));
}

}  // namespace qrn
