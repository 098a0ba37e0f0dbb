#include "ZipEntry.h"

#include <zlib.h>

#include <array>

namespace qrndata::test {

namespace {

// Where the two lengths stand behind a file's signature, and how long its head is without them.
constexpr size_t kNameLength = 26, kExtraLength = 28, kHead = 30;

size_t Word(const std::string& bytes, size_t at) {
  return static_cast<uint8_t>(bytes.at(at)) + 256u * static_cast<uint8_t>(bytes.at(at + 1));
}

std::string Inflated(const std::string& bytes, size_t at) {
  z_stream stream{};
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data() + at));
  stream.avail_in = static_cast<uInt>(bytes.size() - at);
  if (inflateInit2(&stream, -MAX_WBITS) != Z_OK) return {};
  std::string text;
  std::array<char, 4096> part{};
  int result = Z_OK;
  while (result == Z_OK) {
    stream.next_out = reinterpret_cast<Bytef*>(part.data());
    stream.avail_out = part.size();
    result = inflate(&stream, Z_NO_FLUSH);
    text.append(part.data(), part.size() - stream.avail_out);
  }
  inflateEnd(&stream);
  return result == Z_STREAM_END ? text : "";
}

}  // namespace

std::string ZipEntry(const std::string& zip, const std::string& name) {
  for (size_t at = zip.find("PK\3\4"); at != zip.npos; at = zip.find("PK\3\4", at + 1)) {
    const size_t length = Word(zip, at + kNameLength);
    if (zip.compare(at + kHead, length, name) != 0) continue;
    return Inflated(zip, at + kHead + length + Word(zip, at + kExtraLength));
  }
  return {};
}

}  // namespace qrndata::test
