// What a fill sees of the list it fills: a list box, a combo box, a grid. Controls implement it,
// tests stand in for it; the engine knows no window.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "core/DbTypes.h"

namespace qrn {

// Every call may run the application's event handlers, which may call the engine again: on the
// same tables, and even so that a dictionary goes. A fill therefore asks for its table again after
// every call in which that can happen.
class RowSink {
 public:
  virtual ~RowSink() = default;

  // The table to read, looked up by its names at each call. Null ends the fill.
  virtual DbTableInfo* Table() = 0;

  // Takes all rows away. Called once, when nothing but the reading itself can fail any more; the
  // rows to come have `fieldCount` fields.
  virtual void Empty(size_t fieldCount) = 0;

  // Raises the event `Format` with the row's text by reference, the control's cancel flag cleared
  // before. False when the handler set the flag: the row is not added and the fill ends.
  virtual bool Format(std::u16string& lineData) = 0;

  // Adds a row; `text` is code page 932, valid during the call. False when no further row fits:
  // the fill ends, and this row may or may not be shown.
  virtual bool AddRow(const char* text) = 0;

  // The record position of the row added last or, where the fill says so beforehand, of the row
  // about to be formatted. Plain fills give none.
  virtual void GivePosition(uint32_t /*position*/) {}

  // The fill keeps its replies under this result id.
  virtual void TakeResultId(int16_t /*id*/) {}

  // Raises the event `BtrieveError`. What a handler makes of the status changes nothing.
  virtual void BtrieveError(const char* /*tableName*/, Status /*status*/) {}
};

}  // namespace qrn
