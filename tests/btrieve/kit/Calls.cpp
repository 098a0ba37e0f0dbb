#include "Calls.h"

#include <algorithm>

namespace btrieve::test {
namespace {

// A buffer on the heap of exactly its size: behind it the sanitizer stands.
std::unique_ptr<uint8_t[]> Filled(const Bytes& bytes, size_t size) {
  auto buffer = std::make_unique<uint8_t[]>(size);
  std::fill_n(buffer.get(), size, kUnused);
  std::copy_n(bytes.begin(), std::min(bytes.size(), size), buffer.get());
  return buffer;
}

}  // namespace

Bytes CallOut::Returned() const {
  return {data.begin(),
          data.begin() + static_cast<std::ptrdiff_t>(std::min<size_t>(length, data.size()))};
}

ThisProcess::ThisProcess() : blocks_(kBlocks, Bytes(128)) {}

ThisProcess::~ThisProcess() { BTRCALL(kReset, nullptr, nullptr, nullptr, nullptr, 0, 0); }

CallOut ThisProcess::Call(int operation, int block, const CallIn& in) {
  const size_t room = std::max(in.room, in.data.size());
  const size_t keySize = in.keyLength < 0 ? 255 : static_cast<size_t>(in.keyLength);
  const auto data = Filled(in.data, room);
  const auto key = Filled(in.key, keySize);
  const Bytes dataBefore(data.get(), data.get() + room);
  const Bytes keyBefore(key.get(), key.get() + keySize);
  CallOut out;
  out.length = static_cast<uint32_t>(room);
  out.status = BTRCALL(static_cast<uint16_t>(operation), in.noBlock ? nullptr : Block(block),
                       in.noData ? nullptr : data.get(), in.noLength ? nullptr : &out.length,
                       in.noKey ? nullptr : key.get(), static_cast<uint8_t>(keySize),
                       static_cast<int8_t>(in.keyNumber));
  out.data.assign(data.get(), data.get() + room);
  out.key.assign(key.get(), key.get() + keySize);
  out.dataTouched = out.data != dataBefore;
  out.keyTouched = out.key != keyBefore;
  return out;
}

Bytes PathKey(const std::string& path) { return Padded(path, path.size() + 1, '\0'); }

}  // namespace btrieve::test
