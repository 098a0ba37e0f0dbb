// The messages that a test's code shows, in place of message boxes.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/CodePage.h"
#include "platform/MessageBox.h"
#include "tests/support/Pinned.h"

namespace qrn::test {

class ShownMessages : Pinned {
 public:
  ShownMessages() {
    shown_.clear();
    ReplaceShowBox([](const char* text, unsigned) {
      shown_.push_back(CodePageToUtf8(text));
      return kBoxOk;
    });
  }
  ~ShownMessages() { ReplaceShowBox(nullptr); }

  // The texts since the last call as UTF-8, one after another with a blank between.
  std::string Take() { return JoinedUpTo(std::string::npos); }

  // Only their codes, "VE041 VE818".
  std::string TakeCodes() { return JoinedUpTo(5); }

 private:
  static std::string JoinedUpTo(size_t length) {
    std::string joined;
    for (const std::string& text : std::exchange(shown_, {})) {
      joined += (joined.empty() ? "" : " ") + text.substr(0, length);
    }
    return joined;
  }

  static inline std::vector<std::string> shown_;
};

// What a list of fields or a condition says that names a field the table does not have.
inline std::string NoSuchField(const std::string& name) {
  return "VE818 Extendedオペレーションで指定されたフィールド(" + name + ")が存在しません。";
}

}  // namespace qrn::test
