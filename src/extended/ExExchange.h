// One request and the buffer that carries it to the record manager and brings its reply back. The
// buffer is allocated once and serves call after call.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>

#include "core/DbTypes.h"
#include "extended/ExRequest.h"
#include "platform/Memory.h"

namespace qrn {

// The key that goes along; the default is none.
struct ExKey {
  void* bytes = nullptr;
  uint8_t length = 0;
  int8_t number = 0;
};

class ExExchange {
 public:
  // Nothing without memory, after VE001.
  static std::optional<ExExchange> Make(ExRequest request);

  // Sets the signature of the calls to come.
  void SetSignature(const char* signature) { request_.SetSignature(signature); }

  // Lays the request in and calls. The status is the record manager's.
  Status Call(uint16_t operation, DbTableInfo& table, const ExKey& key);

  // What the last call brought, at its true length; valid until the next one. Empty when the
  // status is one that brings no records, or when nothing was written.
  std::span<const uint8_t> Reply() const { return {buffer_.get(), replySize_}; }

 private:
  ExExchange(ExRequest request, uint8_t* buffer) : request_(std::move(request)), buffer_(buffer) {}

  uint32_t BufferSize() const { return static_cast<uint32_t>(request_.BufferSize()); }

  ExRequest request_;
  std::unique_ptr<uint8_t, MemoryDeleter> buffer_;
  size_t replySize_ = 0;
};

}  // namespace qrn
