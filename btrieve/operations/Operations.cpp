#include "btrieve/operations/Operations.h"

#include <array>
#include <iterator>

namespace btrieve {
namespace {

// What an operation needs before its handler runs, in the order in which a lack is told.
enum Needs : uint16_t {
  kNothing = 0,
  kCursor = 1 << 0,     // 3
  kNoActive = 1 << 1,   // 41 inside a transaction
  kKey = 1 << 2,        // 6 for a number that is no key of the file
  kKeyOrNone = 1 << 3,  // the same, and -1 says "no key"
  kKeyOut = 1 << 4,     // 21 for a key buffer too short for the key's value
  kKeyIn = 1 << 5,      // 21 also without a key buffer
  kRecords = 1 << 6,    // 41 in a key-only file: goes by place
  kMayGetKey = 1 << 7,  // +50 means something
  kReads = 1 << 8,      // takes the transaction's lock where it asks for none
  kNoChunks = 1 << 9,   // 41 for -2, which asks for parts of a record
};

constexpr uint16_t kAlongKey = kCursor | kKey | kKeyOut | kMayGetKey | kReads;
constexpr uint16_t kByValue = kAlongKey | kKeyIn;
constexpr uint16_t kByPlace = kCursor | kRecords | kReads;

struct OperationRow {
  uint8_t number;
  Handler handler;
  uint16_t needs;
};

// clang-format off
constexpr OperationRow kOperations[] = {
    {BtrOpOpen,                  OpenFile,             kNothing},
    {BtrOpClose,                 CloseFile,            kCursor},
    {BtrOpInsert,                Insert,               kCursor | kKeyOrNone | kKeyOut},
    {BtrOpUpdate,                Update,               kCursor | kKeyOrNone | kKeyOut},
    {BtrOpDelete,                Delete,               kCursor},
    {BtrOpGetEqual,              GetEqual,             kByValue},
    {BtrOpGetNext,               GetNext,              kAlongKey},
    {BtrOpGetPrevious,           GetPrevious,          kAlongKey},
    {BtrOpGetGreater,            GetGreater,           kByValue},
    {BtrOpGetGreaterOrEqual,     GetGreaterOrEqual,    kByValue},
    {BtrOpGetLess,               GetLess,              kByValue},
    {BtrOpGetLessOrEqual,        GetLessOrEqual,       kByValue},
    {BtrOpGetFirst,              GetFirst,             kAlongKey},
    {BtrOpGetLast,               GetLast,              kAlongKey},
    {BtrOpCreate,                MakeFile,             kNothing},
    {BtrOpStat,                  Stat,                 kCursor},
    {BtrOpBeginTransaction,      BeginTransaction,     kNothing},
    {BtrOpEndTransaction,        EndTransaction,       kNothing},
    {BtrOpAbortTransaction,      AbortTransaction,     kNothing},
    {BtrOpGetPosition,           GetPosition,          kCursor},
    {BtrOpGetDirect,             GetDirect,            kCursor | kKeyOrNone | kKeyOut | kReads | kNoChunks},
    {BtrOpStepNext,              StepNext,             kByPlace},
    {BtrOpStop,                  Stop,                 kNothing},
    {BtrOpVersion,               Version,              kNothing},
    {BtrOpUnlock,                Unlock,               kCursor},
    {BtrOpReset,                 Reset,                kNothing},
    {BtrOpSetOwner,              SetOwner,             kCursor | kNoActive},
    {BtrOpClearOwner,            ClearOwner,           kCursor | kNoActive},
    {BtrOpCreateIndex,           CreateIndex,          kCursor | kNoActive},
    {BtrOpDropIndex,             DropIndex,            kCursor | kNoActive},
    {BtrOpStepFirst,             StepFirst,            kByPlace},
    {BtrOpStepLast,              StepLast,             kByPlace},
    {BtrOpStepPrevious,          StepPrevious,         kByPlace},
    {BtrOpGetNextExtended,       GetNextExtended,      kCursor | kKey | kReads},
    {BtrOpGetPreviousExtended,   GetPreviousExtended,  kCursor | kKey | kReads},
    {BtrOpStepNextExtended,      StepNextExtended,     kByPlace},
    {BtrOpStepPreviousExtended,  StepPreviousExtended, kByPlace},
    {BtrOpInsertExtended,        InsertExtended,       kCursor | kKeyOrNone | kKeyOut},
    {BtrOpGetByPercentage,       GetByPercentage,      kCursor | kKeyOrNone | kKeyOut | kReads},
    {BtrOpFindPercentage,        FindPercentage,       kCursor | kKeyOrNone | kKeyOut},
    {BtrOpLogin,                 Login,                kNothing},
};
// clang-format on

constexpr int8_t kChunks = -2;

constexpr uint16_t kNumbers = 100;  // operations without their bias are below
constexpr auto kRowOfNumber = [] {
  std::array<const OperationRow*, kNumbers> rows{};
  for (const OperationRow& row : kOperations) rows[row.number] = &row;
  return rows;
}();

const OperationRow* FindOperation(uint16_t number) noexcept {
  return number < kNumbers ? kRowOfNumber[number] : nullptr;
}

LockRequest LockOfBias(uint16_t bias) noexcept {
  constexpr LockRequest kLocks[] = {{LockKind::None, true},
                                    {LockKind::Single, true},
                                    {LockKind::Single, false},
                                    {LockKind::Multiple, true},
                                    {LockKind::Multiple, false}};
  return kLocks[bias / 100];
}

bool SetBias(Call& call, uint16_t bias) noexcept {
  if (bias > BtrBiasMultipleNoWait) return false;
  call.bias = bias;
  call.lock = LockOfBias(bias);
  return true;
}

// 1019 and up begin concurrent transactions, 1519 and up those whose writes are not repeated.
bool DecodeConcurrent(Call& call, uint16_t operation) noexcept {
  call.operation = BtrOpBeginTransaction;
  call.begins = TransactionKind::Concurrent;
  call.retriesWrites = operation < 1500;
  return SetBias(call, static_cast<uint16_t>((operation - BtrOpBeginConcurrentTransaction) % 500));
}

bool Decode(Call& call, uint16_t operation) noexcept {
  if (operation == BtrOpSetLongOwner) {
    call.operation = BtrOpSetOwner;
    call.longName = true;
    return true;
  }
  if (operation >= BtrOpBeginConcurrentTransaction && operation <= 1919 &&
      operation % 100 == BtrOpBeginTransaction) {
    return DecodeConcurrent(call, operation);
  }
  if (!SetBias(call, static_cast<uint16_t>(operation / 100 * 100))) return false;
  call.operation = operation % 100;
  call.getKey = call.operation >= BtrBiasGetKey + BtrOpGetEqual &&
                call.operation <= BtrBiasGetKey + BtrOpGetLast;
  if (call.getKey) call.operation = static_cast<uint16_t>(call.operation - BtrBiasGetKey);
  if (call.operation == BtrOpBeginTransaction) call.begins = TransactionKind::Exclusive;
  return true;
}

// A file without keys takes 0 as well as -1 where a key may be left out.
Status FindKey(Call& call, uint16_t needs) noexcept {
  if (!(needs & (kKey | kKeyOrNone))) return kOk;
  const bool mayLack = needs & kKeyOrNone;
  if (mayLack && call.keyNumber == -1) return kOk;
  call.slot = call.File().Base().SlotOf(call.keyNumber);
  if (call.slot >= 0) return kOk;
  return mayLack && call.keyNumber == 0 && call.File().KeyCount() == 0 ? kOk : kInvalidKeyNumber;
}

Status CheckKeyBuffer(const Call& call, uint16_t needs) noexcept {
  if (!(needs & kKeyOut) || call.slot < 0) return kOk;
  if (!call.key) return needs & kKeyIn ? kKeyBufferTooShort : kOk;
  return call.keyLength < call.Key().order.KeyLength() ? kKeyBufferTooShort : kOk;
}

void TakeTransactionsLock(Call& call) noexcept {
  const Transaction& running = call.session.Running();
  if (call.bias == 0 && running.kind == TransactionKind::Concurrent) call.lock = running.readLock;
}

Status Check(Call& call, uint16_t needs) noexcept {
  if (needs & kCursor) {
    call.cursor = call.session.Cursors().Find(call.block);
    if (!call.cursor) return kNotOpen;
    if (call.cursor->isLost && call.operation != BtrOpClose) return kNotActive;
  }
  if ((needs & kNoActive) && call.session.InTransaction()) return kNotAllowed;
  if ((needs & kRecords) && call.File().Spec().IsKeyOnly()) return kNotAllowed;
  if ((needs & kNoChunks) && call.keyNumber == kChunks) return kNotAllowed;
  if (const Status status = FindKey(call, needs)) return status;
  if (const Status status = CheckKeyBuffer(call, needs)) return status;
  if (needs & kReads) TakeTransactionsLock(call);
  return kOk;
}

}  // namespace

Status RunCall(Call& call, uint16_t operation) {
  if (!Decode(call, operation)) return kInvalidOperation;
  const OperationRow* row = FindOperation(call.operation);
  if (!row) return kInvalidOperation;
  if (const Status status = Check(call, row->needs)) return status;
  return row->handler(call);
}

}  // namespace btrieve
