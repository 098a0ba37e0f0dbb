// The blocks of Create and Create Index, the stored specification, extended descriptors: arbitrary
// bytes give a status, and whatever is accepted can be used.

#include "btrieve/keys/KeyOrder.h"
#include "btrieve/operations/StatReply.h"
#include "btrieve/scans/ExtendedRequest.h"
#include "tests/fuzz/FuzzInput.h"

using namespace btrieve;
using namespace qrn::fuzz;

namespace {

using Bytes = std::span<const uint8_t>;

// Every accepted key can be built and fed a record and a value.
void UseKeys(const FileSpec& file) {
  const std::vector<uint8_t> record(file.recordLength, 0x5A);
  for (const KeySpec& key : file.keys) {
    const KeyOrder order(file, key);
    Require(order.OrderedSize() <= kMaxOrderedSize && order.KeyLength() <= kMaxKeyLength);
    uint8_t raw[kMaxKeyLength];
    uint8_t fromRecord[kMaxOrderedSize];
    uint8_t fromKey[kMaxOrderedSize];
    order.CopyKey(record.data(), raw);
    order.OrderRecord(record.data(), fromRecord);
    order.OrderKey(raw, fromKey);
    Require(std::equal(fromRecord, fromRecord + order.OrderedSize(), fromKey));
  }
}

void UseSpec(const FileSpec& file) {
  UseKeys(file);
  FileSpec loaded;
  Require(LoadSpec(StoreSpec(file), loaded) && loaded == file);
  std::vector<uint8_t> room(3000);
  uint32_t length = 0;
  (void)WriteStat(file, {}, -1, room, length);
  Require(length <= room.size());
}

void TryCreate(Bytes input) {
  FileSpec file;
  if (ParseCreateBlock(input, file) != kOk) return;
  UseSpec(file);
  uint8_t added = 0;
  const Bytes rest = input.subspan(input.size() / 2);
  if (AddIndexFromBlock(rest, 0, file, added) == kOk) UseSpec(file);
}

void TryStored(Bytes input) {
  FileSpec file;
  if (LoadSpec(input, file)) UseSpec(file);
}

void TryDescriptor(Bytes input) {
  FileSpec file;
  file.sequences.resize(input.size() % 2);
  ExtendedRequest request;
  if (request.Compile(input, file) != kOk) return;
  std::vector<uint8_t> reply(300);
  ReplyWriter writer(reply, request.Fields());
  for (size_t length = 0; length <= input.size(); ++length) {
    const std::vector<uint8_t> record(input.begin(), input.begin() + length);
    if (request.Judge(record.data(), length) != Verdict::Accept) continue;
    (void)writer.Add(1, record.data(), length);
  }
  Require(writer.Finish() <= reply.size());
}

void TryInsert(Bytes input) {
  std::vector<Bytes> images;
  if (ParseInsertExtended(input, images) != kOk) return;
  size_t bytes = 2;
  for (const Bytes& image : images) bytes += 2 + image.size();
  Require(bytes == input.size());
}

constexpr void (*kTargets[])(Bytes) = {TryCreate, TryStored, TryDescriptor, TryInsert};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  kTargets[data[0] % 4](Bytes(data + 1, size - 1));
  return 0;
}
