// What a new form says, in the language it was asked for. UTF-8.
#pragma once

#include "host/newform/FormChoice.h"

namespace qrn::newform {

enum class Word {
  // Captions.
  First,
  Previous,
  Next,
  Last,
  Clear,
  Insert,
  Update,
  Remove,
  Close,
  Find,
  Page,
  Display,  // of what is only shown
  List,
  // What the status line and boxes say.
  RemoveQuestion,
  Empty,
  Ready,
  Seek,
  Inserted,
  Updated,
  Removed,
  Kept,
  NotFound,
  Duplicate,
  NoRecord,
  End,
  KeyFixed,
  TooLong,
  ChangedByOther,
  InUse,
  Failed,
  Partly,
  BadText,
  BadNumber,
  // Remarks in the code.
  About,
  Opening,
  Course,
  Judging,
  Pictures,
  kCount
};

class Words {
 public:
  explicit Words(Language language) noexcept : language_(language) {}
  const char* operator[](Word word) const noexcept;

 private:
  Language language_;
};

}  // namespace qrn::newform
