// Builds the descriptors of extended reads.
#pragma once

#include <cstddef>

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

inline Bytes DescriptorBytes(const Descriptor& descriptor) {
  Bytes body = Padded(descriptor.signature, 2) + Number(descriptor.rejects) +
               Number(static_cast<uint16_t>(descriptor.terms.size()));
  for (const TermOf& term : descriptor.terms) {
    body = std::move(body) + Bytes{term.type} + Number(term.length) + Number(term.offset) +
           Bytes{static_cast<uint8_t>(term.comparison), static_cast<uint8_t>(term.connector)} +
           term.operand;
  }
  body = std::move(body) + Number(descriptor.wanted) +
         Number(static_cast<uint16_t>(descriptor.fields.size()));
  for (const FieldOf& field : descriptor.fields) {
    body = std::move(body) + Number(field.length) + Number(field.offset);
  }
  return Number(static_cast<uint16_t>(body.size() + 2 + descriptor.lengthOff)) + body;
}

// "offset-of-position:data-in-hex" of each record of a reply, e.g. "5:00ff 7:01ff"; "?" in front
// when count, lengths and size do not agree.
inline std::string ReplyText(const Bytes& reply) {
  std::string text;
  size_t at = 2;
  for (int left = NumberAt<uint16_t>(reply, 0); left > 0; --left) {
    const auto length = NumberAt<uint16_t>(reply, at);
    if (at + 6 + length > reply.size()) return "?" + text;
    if (!text.empty()) text += ' ';
    const auto data = reply.begin() + static_cast<std::ptrdiff_t>(at) + 6;
    text += std::to_string(NumberAt<uint32_t>(reply, at + 2)) + ":" + ToHex({data, data + length});
    at += 6 + length;
  }
  return at == reply.size() ? text : "?" + text;
}

}  // namespace btrieve::test
