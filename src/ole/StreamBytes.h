// Streams of COM as sources and sinks of bytes.
#pragma once

#include <objidl.h>

#include "ole/tables/PersistStream.h"

namespace qrn::ole {

class StreamSource final : public ByteSource {
 public:
  explicit StreamSource(IStream& stream) noexcept : stream_(stream) {}

  size_t Read(void* into, size_t bytes) override {
    size_t done = 0;
    while (done < bytes) {
      ULONG got = 0;
      const auto wanted = static_cast<ULONG>(bytes - done);
      if (FAILED(stream_.Read(static_cast<char*>(into) + done, wanted, &got)) || got == 0) break;
      done += got;
    }
    return done;
  }

 private:
  IStream& stream_;
};

class StreamSink final : public ByteSink {
 public:
  explicit StreamSink(IStream& stream) noexcept : stream_(stream) {}

  bool Write(const void* from, size_t bytes) override {
    if (bytes == 0) return true;  // the system's streams refuse a null pointer even so
    ULONG written = 0;
    const HRESULT result = stream_.Write(from, static_cast<ULONG>(bytes), &written);
    if (FAILED(result)) failure_ = result;
    return SUCCEEDED(result) && written == bytes;
  }
  // Why a write was refused; E_FAIL if the stream took less than all.
  HRESULT failure() const noexcept { return failure_; }

 private:
  IStream& stream_;
  HRESULT failure_ = E_FAIL;
};

// Counts bytes and keeps none.
class CountingSink final : public ByteSink {
 public:
  bool Write(const void*, size_t bytes) override {
    count_ += bytes;
    return true;
  }
  uint64_t count() const noexcept { return count_; }

 private:
  uint64_t count_ = 0;
};

}  // namespace qrn::ole
