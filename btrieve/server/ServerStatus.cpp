#include "btrieve/server/ServerStatus.h"

#include <algorithm>

namespace btrieve::server {
namespace {

struct StateRow {
  std::string_view begin;  // of the state; the first row that fits counts
  Status status;
};
constexpr StateRow kStates[] = {
    {"08", kNotActive},                 // connection
    {"57P", kNotActive},                // the server goes down, or ends the session
    {"57014", kFileInUse},              // the statement took too long
    {"53100", kDiskFull},               // no room on its disk
    {"53200", kLockError},              // no room for more locks, or no memory
    {"53", kNotActive},                 // too many connections
    {"28", kLoginFailed},               // user or password
    {"3D000", kNoSuchDatabase},         // database
    {"3F000", kFileNotFound},           // schema
    {"42P01", kFileNotFound},           // table
    {"42P07", kFileExists},             // table, or an index of that name
    {"42710", kFileExists},             // type, whose name a table cannot have
    {"42501", kPermissionError},        // no right
    {"25006", kPermissionError},        // only for reading
    {"55P03", kFileInUse},              // lock
    {"40P01", kDeadlock},               // deadlock
    {"40", kFileInUse},                 // another transaction was in the way
    {"25P02", kTransactionNotWritten},  // refused before, so undone
    {"54011", kNumberOfKeys},           // columns, those of keys that have gone too
    {"23505", kDuplicateKey},           // unique
};

constexpr size_t kStateLength = 5;

// Where a message tells everything, a state stands behind the severity: "FATAL:  28P01: ...". Of
// several attempts the last one's; empty where no server has refused.
std::string_view StateIn(std::string_view message) noexcept {
  constexpr std::string_view kBefore = ":  ", kBehind = ": ";
  const auto isPart = [](char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z'); };
  for (size_t at = message.rfind(kBefore); at != message.npos; at = message.rfind(kBefore, at)) {
    const std::string_view behind = message.substr(at + kBefore.size());
    const std::string_view state = behind.substr(0, kStateLength);
    if (std::ranges::all_of(state, isPart) && behind.substr(state.size()).starts_with(kBehind)) {
      return state;
    }
    if (at-- == 0) break;
  }
  return {};
}

}  // namespace

Status StatusOfState(std::string_view state) noexcept {
  for (const StateRow& row : kStates) {
    if (state.starts_with(row.begin)) return row.status;
  }
  return kIoError;
}

Status StatusOfRefusal(std::string_view message) noexcept {
  const Status status = StatusOfState(StateIn(message));
  return status == kIoError ? kNotActive : status;
}

}  // namespace btrieve::server
