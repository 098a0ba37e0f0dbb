#include <unistd.h>

#include <type_traits>

#include "Wire.h"

namespace btrieve::test {
namespace {

// Each field in turn; `each` puts it into a message, or takes it from one.
template <class Call, class Each>
void EveryField(Call& call, Each each) requires requires {
  call.in;
}
{
  each(call.operation), each(call.block), each(call.in.data), each(call.in.room);
  each(call.in.key), each(call.in.keyLength), each(call.in.keyNumber);
}
template <class Out, class Each>
void EveryField(Out& out, Each each) {
  each(out.status), each(out.data), each(out.length);
  each(out.key), each(out.dataTouched), each(out.keyTouched);
}

template <class Fields>
Bytes Written(const Fields& fields) {
  Bytes message;
  EveryField(fields, [&]<class Value>(const Value& value) {
    if constexpr (std::is_same_v<Value, Bytes>) {
      message = std::move(message) + Number(static_cast<uint32_t>(value.size())) + value;
    } else {
      message = std::move(message) + Number(static_cast<int64_t>(value));
    }
  });
  return message;
}

template <class Fields>
Fields Taken(const Bytes& message) {
  Fields fields;
  size_t at = 0;
  EveryField(fields, [&]<class Value>(Value& value) {
    if constexpr (std::is_same_v<Value, Bytes>) {
      const auto size = NumberAt<uint32_t>(message, at);
      const auto from = message.begin() + static_cast<std::ptrdiff_t>(at + sizeof size);
      value.assign(from, from + size);
      at += sizeof size + size;
    } else {
      value = static_cast<Value>(NumberAt<int64_t>(message, at));
      at += sizeof(int64_t);
    }
  });
  return fields;
}

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

Bytes ToWire(const RemoteCall& call) { return Written(call); }
Bytes ToWire(const CallOut& out) { return Written(out); }
RemoteCall CallFromWire(const Bytes& bytes) { return Taken<RemoteCall>(bytes); }
CallOut OutFromWire(const Bytes& bytes) { return Taken<CallOut>(bytes); }

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
