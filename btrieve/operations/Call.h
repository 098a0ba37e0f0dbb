// One call of the entry, taken apart, and the operations by number.
#pragma once

#include <cstdint>

#include "btrieve/session/Session.h"

namespace btrieve {

struct Call {
  explicit Call(Session& client) noexcept : session(client) {}

  Session& session;
  uint16_t operation = 0;  // base number
  bool getKey = false;     // +50
  LockRequest lock;        // from the bias, or the transaction's for reads
  uint16_t bias = 0;       // 0..400
  TransactionKind begins = TransactionKind::None;
  bool retriesWrites = true;  // of the transaction that begins
  bool longName = false;      // Set Owner with a long name
  void* block = nullptr;
  uint8_t* data = nullptr;
  uint32_t room = 0;  // bytes at `data` that may be read and written
  uint32_t* length = nullptr;
  uint8_t* key = nullptr;
  uint8_t keyLength = 0;
  int8_t keyNumber = 0;

  Cursor* cursor = nullptr;  // where the operation needs one
  int slot = -1;             // of the key, where it takes one; -1 for key number -1

  DataFile& File() const noexcept { return *cursor->file; }
  Index& Key() const noexcept { return File().IndexAt(slot); }
  void ReturnLength(uint32_t bytes) const noexcept {
    if (length) *length = bytes;
  }
};

using Handler = Status (*)(Call& call);

// By area; each takes the call after the checks its row asks for.
Status OpenFile(Call& call);
Status CloseFile(Call& call);
Status MakeFile(Call& call);
Status Stat(Call& call);
Status Stop(Call& call);
Status Version(Call& call);
Status Reset(Call& call);
Status Login(Call& call);
Status SetOwner(Call& call);
Status ClearOwner(Call& call);
Status CreateIndex(Call& call);
Status DropIndex(Call& call);

Status Insert(Call& call);
Status Update(Call& call);
Status Delete(Call& call);
Status InsertExtended(Call& call);

Status GetEqual(Call& call);
Status GetNext(Call& call);
Status GetPrevious(Call& call);
Status GetGreater(Call& call);
Status GetGreaterOrEqual(Call& call);
Status GetLess(Call& call);
Status GetLessOrEqual(Call& call);
Status GetFirst(Call& call);
Status GetLast(Call& call);

Status GetPosition(Call& call);
Status GetDirect(Call& call);
Status StepFirst(Call& call);
Status StepLast(Call& call);
Status StepNext(Call& call);
Status StepPrevious(Call& call);

Status GetNextExtended(Call& call);
Status GetPreviousExtended(Call& call);
Status StepNextExtended(Call& call);
Status StepPreviousExtended(Call& call);

Status GetByPercentage(Call& call);
Status FindPercentage(Call& call);

Status BeginTransaction(Call& call);
Status EndTransaction(Call& call);
Status AbortTransaction(Call& call);
Status Unlock(Call& call);

}  // namespace btrieve
