// The operations behind an operation button and a record scroll bar: what the screen holds goes
// into the record buffer, Btrieve is called, its answer goes back to the screen.
//
// A caller's handlers run in the middle, on the same buffer: what they change stays, and that is
// the purpose of `SetData`. Results: 0, Btrieve's status, -1 (no key; no memory, after VE001), -2
// (the handler of `SetData` refused; Btrieve was not called), -3 (the table went while a handler
// ran).
#pragma once

#include <cstdint>

#include "core/DbEngine.h"
#include "core/FieldControls.h"

namespace qrn {

// A button's `DbOperation`. The misspelt name is the interface's own.
enum DbOperationCode : int32_t {
  DbInsert = 0,
  DbUpdate = 1,
  DbDelete = 2,
  DbGetEqual = 3,
  DbGetFirst = 4,
  DbGetLast = 5,
  DbGetNext = 6,
  DbGetPrevious = 7,
  DbGetGreater = 8,
  DbGetLessThan = 9,
  DbGetGreaterOrEqual = 10,
  DbGetLessThanOrEuqal = 11,
  DbStepFirst = 12,
  DbStepLast = 13,
  DbStepNext = 14,
  DbStepPrevious = 15,
  DbInsertNCC = 16,
  DbUpdateNCC = 17,
};

// Btrieve's number for the reading operations (3 to 15), -1 for any other value.
int32_t DbOpToBtrieve(int32_t dbOperation) noexcept;

// Get operations (5 to 13). All but Get Next and Get Previous take their key from the screen. On a
// table of variable-length records the record is read twice: by the key, then whole by position.
[[nodiscard]] Status DbButtonRead(DbEngine& engine, int32_t operation, BoundButton& button);

// Inserts a record of what the controls hold, everything else empty. `noCurrencyChange` leaves the
// position along the key as it is.
[[nodiscard]] Status DbButtonInsert(DbEngine& engine, BoundButton& button, bool noCurrencyChange);

// Updates the current record: fields without a control keep what the last read brought.
[[nodiscard]] Status DbButtonUpdate(DbEngine& engine, BoundButton& button, bool noCurrencyChange);

[[nodiscard]] Status DbButtonDelete(DbEngine& engine, BoundButton& button);

// Step operations (24, 33 to 35); no `SetData`. A record of variable length comes back cut at its
// fixed part, and the status says so.
[[nodiscard]] Status DbButtonStep(DbEngine& engine, int32_t operation, BoundButton& button);

// A scroll bar's read: the key from the screen, no lock, no event.
[[nodiscard]] Status DbScrollCall(DbEngine& engine, int32_t operation, BoundCaller& caller);

}  // namespace qrn
