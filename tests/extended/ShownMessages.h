// The messages that a test's code shows, in place of message boxes.
#pragma once

#include <string>

#include "tests/support/Pinned.h"

namespace qrn::test {

class ShownMessages : Pinned {
 public:
  ShownMessages();
  ~ShownMessages();

  // The texts since the last call as UTF-8, one after another with a blank between.
  std::string Take();

  // Only their codes, "VE041 VE818".
  std::string TakeCodes();
};

// What a list of fields or a condition says that names a field the table does not have.
inline std::string NoSuchField(const std::string& name) {
  return "VE818 Extendedオペレーションで指定されたフィールド(" + name + ")が存在しません。";
}

}  // namespace qrn::test
