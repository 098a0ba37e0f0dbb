// Calls of the record manager as tests make them: buffers of exactly the size told, so that the
// sanitizer sees one byte too many, and everything that comes back in one value.
#pragma once

#include <memory>

#include "Bytes.h"
#include "btrieve.h"
#include "btrieve/system/Status.h"
#include "tests/support/TempFolder.h"

namespace btrieve::test {

enum Op : uint16_t {
#define BTRIEVE_OPERATION(name, number) k##name = number,
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
  Bytes Returned() const;
};

// Bytes of a buffer that the caller did not fill.
constexpr uint8_t kUnused = 0xEE;

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
  ThisProcess();
  ~ThisProcess() override;  // resets: nothing stays open for the next test
  CallOut Call(int operation, int block, const CallIn& in) override;
  uint8_t* Block(int block) { return blocks_[block].data(); }

 private:
  std::vector<Bytes> blocks_;
};

using Folder = qrn::test::TempFolder;

// A path as key buffer, with its NUL.
Bytes PathKey(const std::string& path);

}  // namespace btrieve::test
