// A worker that is told what to do, and tells what it does, in lines.
#pragma once

#include <optional>

#include "clients/Remote.h"

namespace btrieve::test {

class LineProcess {
 public:
  // See OtherProcess.
  LineProcess(const std::vector<std::string>& arguments, const std::vector<std::string>& program)
      : process_(arguments, program) {}

  void Say(const std::string& line);
  // Nothing once it is gone and all it has said has been heard. A minute of silence is "x hangs".
  std::optional<std::string> Hear();
  void Kill() { process_.Kill(); }
  std::string Ending() { return process_.Ending(); }
  // Ends its input, upon which it ends in order.
  void Dismiss() { process_.CloseInput(); }

 private:
  OtherProcess process_;
  std::string unread_;
};

}  // namespace btrieve::test
