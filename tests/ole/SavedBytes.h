// What controls keep in a stream, as bytes.
#pragma once

#include <ocidl.h>

#include "com/Com.h"
#include "tests/support/Test.h"

namespace qrn::test {

// At its beginning.
inline com::Com<IStream> StreamOf(std::span<const uint8_t> bytes) {
  com::Com<IStream> stream;
  CreateStreamOnHGlobal(nullptr, TRUE, stream.put());
  stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr);
  stream->Seek({}, STREAM_SEEK_SET, nullptr);
  return stream;
}

inline std::vector<uint8_t> BytesOf(IStream& stream) {
  STATSTG state{};
  stream.Stat(&state, STATFLAG_NONAME);
  stream.Seek({}, STREAM_SEEK_SET, nullptr);
  std::vector<uint8_t> bytes(state.cbSize.QuadPart);
  ULONG read = 0;
  stream.Read(bytes.data(), static_cast<ULONG>(bytes.size()), &read);
  bytes.resize(read);
  return bytes;
}

inline std::vector<uint8_t> Saved(IUnknown* control) {
  const auto stream = StreamOf({});
  EXPECT_EQ(com::Query<IPersistStreamInit>(control)->Save(stream.get(), TRUE), S_OK);
  return BytesOf(*stream);
}

inline HRESULT LoadFrom(IUnknown* control, std::span<const uint8_t> bytes) {
  return com::Query<IPersistStreamInit>(control)->Load(StreamOf(bytes).get());
}

}  // namespace qrn::test
