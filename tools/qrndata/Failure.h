// What ends a verb: a message for the user and the program's exit code.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace qrndata {

enum ExitCode : int {
  kDone = 0,
  kFaultsFound = 1,  // the work was done, but rows were refused or faults were found
  kUsage = 2,        // the command line
  kBadInput = 3,     // a schema, CSV file, table or field name
  kSystem = 4,       // a file that cannot be read or written, a status of the record manager
  kInterrupted = 130,
};

// A place in a text file, both counted from 1; columns count characters. 0 means unknown.
struct Position {
  uint32_t line = 0;
  uint32_t column = 0;
};

// Thrown by a verb that cannot go on. what() is UTF-8, one sentence without a full stop.
class Failure : public std::runtime_error {
 public:
  Failure(ExitCode code, const std::string& text) : std::runtime_error(text), code_(code) {}

  ExitCode Code() const noexcept { return code_; }

 private:
  ExitCode code_;
};

// "orders.csv:12:3: text", the form that editors jump from.
std::string AtPlace(std::string_view file, Position position, std::string_view text);

// `file` and `text` are UTF-8.
Failure BadInput(std::string_view file, Position position, std::string_view text);

}  // namespace qrndata
