#include "Registers.h"

#include <chrono>
#include <sstream>

namespace btrieve::test {
namespace {

constexpr size_t kRegisterRecord = 16;
constexpr int kSingleNoWait = 200;
constexpr int kMultipleNoWait = 400;

struct VerbRow {
  ToldCall::Verb verb;
  int operation;
};
constexpr VerbRow kVerbs[] = {
    {ToldCall::Get, kGetEqual},
    {ToldCall::LockingGet, kGetEqual + kSingleNoWait},
    {ToldCall::Insert, kInsert + kMultipleNoWait},
    {ToldCall::Update, kUpdate + kMultipleNoWait},
    {ToldCall::Delete, kDelete + kMultipleNoWait},
    {ToldCall::BeginExclusive, kBegin + kMultipleNoWait},
    {ToldCall::BeginLocking, kConcurrent + kBegin + kMultipleNoWait},
    {ToldCall::BeginPlain, kConcurrent + kBegin},
    {ToldCall::End, kEnd},
    {ToldCall::Abort, kAbort},
};

int OperationOf(const ToldCall& call, bool inTransaction) {
  if (call.verb == ToldCall::LockingGet && inTransaction) return kGetEqual + kMultipleNoWait;
  for (const VerbRow& row : kVerbs) {
    if (row.verb == call.verb) return row.operation;
  }
  return -1;
}

}  // namespace

// Keys: id, and the value, which moves with every Update.
Bytes RegisterBlock() {
  return CreateBlock(
      {.recordLength = kRegisterRecord},
      {{.position = 1, .flags = 0x100, .type = 14}, {.position = 5, .flags = 0x103, .type = 14}});
}

Bytes RegisterRecord(uint32_t reg, Value value) {
  return Number(reg) + Number(value) + Padded("register", 8);
}

bool MakeRegisters(Client& client, const std::vector<std::string>& paths) {
  for (const std::string& path : paths) {
    const CallIn in{.data = RegisterBlock(), .key = PathKey(path)};
    if (client.Call(kCreate, kBlocks - 1, in).status != 0) return false;
  }
  return OpenRegisters(client, paths);
}

bool OpenRegisters(Client& client, const std::vector<std::string>& paths) {
  int block = 0;
  for (const std::string& path : paths) {
    if (client.Call(kOpen, block++, {.key = PathKey(path)}).status != 0) return false;
  }
  return true;
}

Status Perform(Client& client, const ToldCall& call, bool inTransaction, Value& seen) {
  CallIn in{.room = kRegisterRecord, .key = Number(call.reg)};
  const bool writes = call.verb == ToldCall::Insert || call.verb == ToldCall::Update;
  if (writes) in = {.data = RegisterRecord(call.reg, call.value), .keyNumber = -1};
  const int file = RegisterFile(call.reg);
  const CallOut out = client.Call(OperationOf(call, inTransaction), file, in);
  const bool read = call.verb == ToldCall::Get || call.verb == ToldCall::LockingGet;
  seen = read && out.status == 0 ? NumberAt<Value>(out.data, 4) : 0;
  if (call.verb == ToldCall::LockingGet && !inTransaction) client.Call(kUnlock, file, {});
  return out.status;
}

int64_t Now() {
  return std::chrono::duration_cast<std::chrono::nanoseconds>(
             std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

std::string CalledText(const ToldCall& call, int64_t time) {
  std::ostringstream text;
  text << "c " << time << ' ' << static_cast<char>(call.verb) << ' ' << call.reg << ' ' << call.old
       << ' ' << call.value;
  return text.str();
}

std::string AnsweredText(Status status, Value seen, int64_t time) {
  return "a " + std::to_string(time) + " " + std::to_string(status) + " " + std::to_string(seen);
}

}  // namespace btrieve::test
