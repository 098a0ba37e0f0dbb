// What a new form says, in the language it was asked for. UTF-8.
#pragma once

#include "host/newform/FormChoice.h"

namespace qrn::newform {

struct Words {
  // Captions.
  const char* first;
  const char* previous;
  const char* next;
  const char* last;
  const char* clear;
  const char* insert;
  const char* update;
  const char* remove;
  const char* close;
  const char* find;
  const char* page;
  const char* display;  // of what is only shown
  const char* list;
  // What the status line and boxes say.
  const char* removeQuestion;
  const char* empty;
  const char* ready;
  const char* seek;
  const char* inserted;
  const char* updated;
  const char* removed;
  const char* kept;
  const char* notFound;
  const char* duplicate;
  const char* noRecord;
  const char* end;
  const char* keyFixed;
  const char* tooLong;
  const char* changedByOther;
  const char* inUse;
  const char* failed;
  const char* partly;
  const char* badText;
  const char* badNumber;
  // Remarks in the code.
  const char* about;
  const char* opening;
  const char* course;
  const char* judging;
  const char* pictures;
};

const Words& WordsOf(Language language) noexcept;

}  // namespace qrn::newform
