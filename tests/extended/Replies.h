#pragma once

#include <cstdint>
#include <vector>

namespace qrn::test {

struct ReplyRecord {
  uint32_t position;
  std::vector<uint8_t> data;
};

// A reply as the record manager writes it.
inline std::vector<uint8_t> Reply(const std::vector<ReplyRecord>& records) {
  std::vector<uint8_t> reply;
  const auto put = [&](uint32_t number, int bytes) {
    for (int i = 0; i < bytes; ++i) reply.push_back(static_cast<uint8_t>(number >> (8 * i)));
  };
  put(static_cast<uint32_t>(records.size()), 2);
  for (const ReplyRecord& record : records) {
    put(static_cast<uint32_t>(record.data.size()), 2);
    put(record.position, 4);
    reply.insert(reply.end(), record.data.begin(), record.data.end());
  }
  return reply;
}

}  // namespace qrn::test
