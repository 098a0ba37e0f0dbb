#include "Descriptor.h"

#include <cstddef>

namespace btrieve::test {

Bytes DescriptorBytes(const Descriptor& descriptor) {
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

std::string ReplyText(const Bytes& reply) {
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
