#include <unistd.h>

#include "Wire.h"

namespace btrieve::test {
namespace {

void Put(Bytes& out, const Bytes& bytes) {
  out = std::move(out) + Number(static_cast<uint32_t>(bytes.size())) + bytes;
}

void Put(Bytes& out, int64_t value) { out = std::move(out) + Number(value); }

// Takes values off a message in the order they were put.
class Taker {
 public:
  explicit Taker(const Bytes& message) : message_(message) {}

  int64_t Value() {
    at_ += sizeof(int64_t);
    return NumberAt<int64_t>(message_, at_ - sizeof(int64_t));
  }
  Bytes Block() {
    const auto size = NumberAt<uint32_t>(message_, at_);
    const auto from = message_.begin() + static_cast<std::ptrdiff_t>(at_ + sizeof size);
    at_ += sizeof size + size;
    return {from, from + size};
  }

 private:
  const Bytes& message_;
  size_t at_ = 0;
};

bool WriteAll(int descriptor, const uint8_t* bytes, size_t size) {
  while (size > 0) {
    const ssize_t written = write(descriptor, bytes, size);
    if (written <= 0) return false;
    bytes += written;
    size -= static_cast<size_t>(written);
  }
  return true;
}

bool ReadAll(int descriptor, uint8_t* bytes, size_t size) {
  while (size > 0) {
    const ssize_t got = read(descriptor, bytes, size);
    if (got <= 0) return false;
    bytes += got;
    size -= static_cast<size_t>(got);
  }
  return true;
}

}  // namespace

Bytes ToWire(const RemoteCall& call) {
  Bytes message;
  Put(message, call.operation);
  Put(message, call.block);
  Put(message, call.in.data);
  Put(message, static_cast<int64_t>(call.in.room));
  Put(message, call.in.key);
  Put(message, call.in.keyLength);
  Put(message, call.in.keyNumber);
  return message;
}

RemoteCall CallFromWire(const Bytes& bytes) {
  Taker taker(bytes);
  RemoteCall call;
  call.operation = static_cast<int>(taker.Value());
  call.block = static_cast<int>(taker.Value());
  call.in.data = taker.Block();
  call.in.room = static_cast<size_t>(taker.Value());
  call.in.key = taker.Block();
  call.in.keyLength = static_cast<int>(taker.Value());
  call.in.keyNumber = static_cast<int>(taker.Value());
  return call;
}

Bytes ToWire(const CallOut& out) {
  Bytes message;
  Put(message, out.status);
  Put(message, out.data);
  Put(message, out.length);
  Put(message, out.key);
  Put(message, out.dataTouched);
  Put(message, out.keyTouched);
  return message;
}

CallOut OutFromWire(const Bytes& bytes) {
  Taker taker(bytes);
  CallOut out;
  out.status = static_cast<Status>(taker.Value());
  out.data = taker.Block();
  out.length = static_cast<uint32_t>(taker.Value());
  out.key = taker.Block();
  out.dataTouched = taker.Value() != 0;
  out.keyTouched = taker.Value() != 0;
  return out;
}

bool SendMessage(int descriptor, const Bytes& message) {
  const Bytes whole = Number(static_cast<uint32_t>(message.size())) + message;
  return WriteAll(descriptor, whole.data(), whole.size());
}

std::optional<Bytes> ReceiveMessage(int descriptor) {
  uint32_t size = 0;
  if (!ReadAll(descriptor, reinterpret_cast<uint8_t*>(&size), sizeof size)) return std::nullopt;
  Bytes message(size);
  if (!ReadAll(descriptor, message.data(), size)) return std::nullopt;
  return message;
}

}  // namespace btrieve::test
