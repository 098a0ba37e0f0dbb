// Random make-ups of files, and random records that collide often.
#pragma once

#include "Bytes.h"
#include "Choices.h"
#include "btrieve/keys/KeySpec.h"

namespace btrieve::test {

struct MakeUp {
  Bytes createBlock;
  FileSpec spec;
  std::string text;  // for a report
};

constexpr size_t kModelRecord = 32;

// One to four keys of any types over a record of kModelRecord bytes, sometimes of variable length.
MakeUp RandomMakeUp(Choices& choices);
Bytes RandomRecord(Choices& choices, const FileSpec& spec);
uint8_t RandomByte(Choices& choices);

}  // namespace btrieve::test
