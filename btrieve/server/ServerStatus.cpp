#include "btrieve/server/ServerStatus.h"

namespace btrieve::server {
namespace {

struct StateRow {
  std::string_view begin;  // of the state; the first row that fits counts
  Status status;
};
constexpr StateRow kStates[] = {
    {"08", kNotActive},           // connection
    {"57P", kNotActive},          // the server goes down, or ends the session
    {"57014", kFileInUse},        // the statement took too long
    {"53100", kDiskFull},         // no room on its disk
    {"53200", kNoCacheBuffer},    // no memory
    {"53", kNotActive},           // too many connections
    {"28", kLoginFailed},         // user or password
    {"3D000", kNoSuchDatabase},   // database
    {"3F000", kFileNotFound},     // schema
    {"42P01", kFileNotFound},     // table
    {"42P07", kFileExists},       // table, or an index of that name
    {"42710", kFileExists},       // type, whose name a table cannot have
    {"42501", kPermissionError},  // no right
    {"25006", kPermissionError},  // only for reading
    {"55P03", kFileInUse},        // lock
    {"40P01", kDeadlock},         // deadlock
    {"23505", kDuplicateKey},     // unique
};

// What the server's messages in English say; in another language the status is the general one.
struct WordRow {
  std::string_view words;
  Status status;
};
constexpr WordRow kRefusals[] = {
    {"password", kLoginFailed},       {"authentication failed", kLoginFailed},
    {"pg_hba.conf", kLoginFailed},    {"role \"", kLoginFailed},
    {"database \"", kNoSuchDatabase},
};

}  // namespace

Status StatusOfState(std::string_view state) noexcept {
  for (const StateRow& row : kStates) {
    if (state.starts_with(row.begin)) return row.status;
  }
  return kIoError;
}

Status StatusOfRefusal(std::string_view message) noexcept {
  for (const WordRow& row : kRefusals) {
    if (message.find(row.words) != message.npos) return row.status;
  }
  return kNotActive;
}

}  // namespace btrieve::server
