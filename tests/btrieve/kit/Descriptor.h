// Builds the descriptors of extended reads.
#pragma once

#include "Bytes.h"

namespace btrieve::test {

enum Comparison : uint8_t { kEq = 1, kGt, kLt, kNe, kGe, kLe };
enum Connector : uint8_t { kLastTerm = 0, kAndNext = 1, kOrNext = 2 };
constexpr uint8_t kWithSequence = 32;
constexpr uint8_t kWithField = 64;
constexpr uint8_t kWithFold = 128;

struct TermOf {
  uint8_t type = 0;
  uint16_t length = 0;
  uint16_t offset = 0;
  int comparison = kEq;
  int connector = kLastTerm;
  Bytes operand = {};  // the constant, or the second field's offset
};

struct FieldOf {
  uint16_t length = 0;
  uint16_t offset = 0;
};

struct Descriptor {
  const char* signature = "EG";
  uint16_t rejects = 0;
  std::vector<TermOf> terms = {};
  uint16_t wanted = 1;
  std::vector<FieldOf> fields = {{4, 0}};
  int lengthOff = 0;  // added to the length word
};

Bytes DescriptorBytes(const Descriptor& descriptor);

// "offset-of-position:data-in-hex" of each record of a reply, e.g. "5:00ff 7:01ff"; "?" in front
// when count, lengths and size do not agree.
std::string ReplyText(const Bytes& reply);

}  // namespace btrieve::test
