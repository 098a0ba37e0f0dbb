// Calls of the record manager as tests make them: buffers of exactly the size told, so that the
// sanitizer sees one byte too many, and everything that comes back in one value.
#pragma once

#include <algorithm>
#include <memory>

#include "Bytes.h"
#include "Folder.h"
#include "btrieve.h"
#include "btrieve/system/Status.h"

namespace btrieve::test {

// Bytes of a buffer that the caller did not fill.
constexpr uint8_t kUnused = 0xEE;

// A buffer on the heap of exactly its size: behind it the sanitizer stands.
inline std::unique_ptr<uint8_t[]> Filled(const Bytes& bytes, size_t size) {
  auto buffer = std::make_unique<uint8_t[]>(size);
  std::fill_n(buffer.get(), size, kUnused);
  std::copy_n(bytes.begin(), std::min(bytes.size(), size), buffer.get());
  return buffer;
}

enum Op : uint16_t {
#define BTRIEVE_OPERATION(name, number) k##name = (number),
  BTR_OPERATIONS(BTRIEVE_OPERATION)
#undef BTRIEVE_OPERATION
      kBegin = kBeginTransaction,
  kEnd = kEndTransaction,
  kAbort = kAbortTransaction,
  kGetKey = BtrBiasGetKey,
  kConcurrent = kBeginConcurrentTransaction - kBeginTransaction,  // added to kBegin
};

constexpr int kBlocks = 32;

struct CallIn {
  Bytes data = {};
  size_t room = 0;  // bytes of the data buffer; less than `data` has means as many
  Bytes key = {};
  int keyLength = -1;  // bytes of the key buffer, and what is told; -1: 255
  int keyNumber = 0;
  // Null pointers in place of buffers.
  bool noBlock = false;
  bool noData = false;
  bool noLength = false;
  bool noKey = false;
};

struct CallOut {
  Status status = 0;
  Bytes data;           // the whole buffer afterwards
  uint32_t length = 0;  // as the call left it
  Bytes key;            // the whole buffer afterwards
  bool dataTouched = false;
  bool keyTouched = false;

  // The bytes returned.
  Bytes Returned() const {
    return {data.begin(),
            data.begin() + static_cast<std::ptrdiff_t>(std::min<size_t>(length, data.size()))};
  }
};

// One client of the record manager: this process, or another one.
class Client {
 public:
  virtual ~Client() = default;
  // `block` numbers the position blocks of the client, 0..kBlocks-1.
  virtual CallOut Call(int operation, int block, const CallIn& in) = 0;
};

// Calls BTRCALL here.
class ThisProcess : public Client {
 public:
  ThisProcess() : blocks_(kBlocks, Bytes(128)) {}
  // resets: nothing stays open for the next test
  ~ThisProcess() override { BTRCALL(kReset, nullptr, nullptr, nullptr, nullptr, 0, 0); }
  CallOut Call(int operation, int block, const CallIn& in) override {
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
  uint8_t* Block(int block) { return blocks_[block].data(); }

 private:
  std::vector<Bytes> blocks_;
};

// A path as key buffer, with its NUL.
inline Bytes PathKey(const std::string& path) { return Padded(path, path.size() + 1, '\0'); }

}  // namespace btrieve::test
