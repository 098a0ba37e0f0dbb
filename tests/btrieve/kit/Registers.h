// A few records in two files, each a register that holds a value or is not there, and the calls on
// them as they are told from process to process.
#pragma once

#include "Calls.h"
#include "Linearizability.h"

namespace btrieve::test {

constexpr uint32_t kRegisterFiles = 2;
constexpr uint32_t kRegistersEach = 4;
constexpr uint32_t kRegisters = kRegisterFiles * kRegistersEach;

// Register r is the record of id r in the file opened as block RegisterFile(r).
constexpr int RegisterFile(uint32_t reg) { return static_cast<int>(reg / kRegistersEach); }

Bytes RegisterBlock();
Bytes RegisterRecord(uint32_t reg, Value value);
bool MakeRegisters(Client& client, const std::vector<std::string>& paths);
bool OpenRegisters(Client& client, const std::vector<std::string>& paths);

// A call on a register, or one that begins or ends a transaction.
struct ToldCall {
  enum Verb : char {
    Get = 'g',
    LockingGet = 'l',
    Insert = 'i',
    Update = 'u',
    Delete = 'd',
    BeginExclusive = 'X',
    BeginLocking = 'C',  // concurrent, reads lock
    BeginPlain = 'P',    // concurrent, reads do not
    End = 'E',
    Abort = 'A',
  };
  Verb verb = Get;
  uint32_t reg = 0;
  Value old = 0;    // Update, Delete: what the process has read there
  Value value = 0;  // Insert, Update
};

// Performs the call; `seen` is the value that a read has found. Other calls' statuses than those of
// locks, keys and changed records are for the caller to refuse.
Status Perform(Client& client, const ToldCall& call, bool inTransaction, Value& seen);

// Nanoseconds of the machine's clock that never goes back.
int64_t Now();

// "c 12345 u 3 7 9": called at that time; "a 12399 80 0": answered, with status and value seen.
std::string CalledText(const ToldCall& call, int64_t time);
std::string AnsweredText(Status status, Value seen, int64_t time);

}  // namespace btrieve::test
