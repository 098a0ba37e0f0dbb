// The messages that a test's code shows, in place of message boxes.
#pragma once

#include <string>

namespace qrn::test {

class ShownMessages {
 public:
  ShownMessages();
  ~ShownMessages();
  ShownMessages(const ShownMessages&) = delete;
  ShownMessages& operator=(const ShownMessages&) = delete;

  // The texts since the last call as UTF-8, one after another with a blank between.
  std::string Take();

  // Only their codes, "VE041 VE818".
  std::string TakeCodes();
};

}  // namespace qrn::test
