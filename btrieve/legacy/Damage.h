// Why an old file is not read, or not all of it: a status for callers, and words for people.
#pragma once

#include <string>

#include "btrieve/pages/Sqlite.h"

namespace btrieve::legacy {

// The words name the place and what is wrong there, in lower case and without a full stop.
struct Damage : Failure {
  Damage(Status code, std::string words) : Failure{code}, text(std::move(words)) {}
  std::string text;
};

// 2: parts of the file disagree.
[[noreturn]] inline void ThrowDamage(std::string text) { throw Damage(kIoError, std::move(text)); }
// 30: `kind` of file is known, or thought of, and not read.
[[noreturn]] inline void ThrowNotRead(const std::string& kind) {
  throw Damage(kNotABtrieveFile, kind + ", which is not read");
}

}  // namespace btrieve::legacy
