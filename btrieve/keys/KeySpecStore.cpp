// The byte form of a specification that stands in the file:
//   4 bytes "KSP1", u32 length of the whole, u16 record length, u16 page size, u16 flags,
//   u16 preallocated pages, u8 version, u8 reserved pointers, u8 keys, u8 sequences;
//   each key: u8 number, u8 segments; each segment: u16 offset, u16 length, u16 flags, u8 type,
//   u8 null value, u8 sequence as given, u8 slot of the sequence (255 none);
//   sequences, 265 bytes each; u32 checksum (FNV-1a) of everything before it.
#include <algorithm>

#include "btrieve/keys/KeySpec.h"
#include "btrieve/keys/KeySpecRules.h"
#include "btrieve/system/ByteReader.h"

namespace btrieve {
namespace {

constexpr uint32_t kSpecMark = 0x3150534B;  // "KSP1"
constexpr uint8_t kStoredNoSequence = 255;
constexpr size_t kLengthAt = 4;

uint32_t Checksum(std::span<const uint8_t> bytes) {
  uint32_t sum = 2166136261u;
  for (const uint8_t byte : bytes) sum = (sum ^ byte) * 16777619u;
  return sum;
}

template <class Value>
void Put(std::vector<uint8_t>& out, Value value) {
  const auto* bytes = reinterpret_cast<const uint8_t*>(&value);
  out.insert(out.end(), bytes, bytes + sizeof value);
}

void PutSegment(std::vector<uint8_t>& out, const KeySegment& segment) {
  Put(out, segment.offset);
  Put(out, segment.length);
  Put(out, segment.flags);
  Put(out, segment.givenType);
  Put(out, segment.nullValue);
  Put(out, segment.givenSequence);
  Put(out, segment.sequence < 0 ? kStoredNoSequence : static_cast<uint8_t>(segment.sequence));
}

void PutKey(std::vector<uint8_t>& out, const KeySpec& key) {
  Put(out, key.number);
  Put(out, static_cast<uint8_t>(key.segments.size()));
  for (const KeySegment& segment : key.segments) PutSegment(out, segment);
}

void PutHead(std::vector<uint8_t>& out, const FileSpec& file) {
  Put(out, kSpecMark);
  Put(out, uint32_t{0});
  Put(out, file.recordLength);
  Put(out, file.pageSize);
  Put(out, file.flags);
  Put(out, file.preallocatedPages);
  Put(out, file.version);
  Put(out, file.reservedPointers);
  Put(out, static_cast<uint8_t>(file.keys.size()));
  Put(out, static_cast<uint8_t>(file.sequences.size()));
}

KeySegment TakeSegment(ByteReader& reader) {
  KeySegment segment;
  segment.offset = reader.Take<uint16_t>();
  segment.length = reader.Take<uint16_t>();
  segment.flags = reader.Take<uint16_t>();
  segment.givenType = reader.Take<uint8_t>();
  segment.nullValue = reader.Take<uint8_t>();
  segment.givenSequence = reader.Take<uint8_t>();
  const uint8_t slot = reader.Take<uint8_t>();
  segment.sequence = slot == kStoredNoSequence ? int16_t{kNoSequence} : int16_t{slot};
  return segment;
}

KeySpec TakeKey(ByteReader& reader) {
  KeySpec key;
  key.number = reader.Take<uint8_t>();
  const uint8_t segments = reader.Take<uint8_t>();
  for (int i = 0; i < segments; ++i) key.segments.push_back(TakeSegment(reader));
  return key;
}

FileSpec TakeFile(ByteReader& reader) {
  FileSpec file;
  file.recordLength = reader.Take<uint16_t>();
  file.pageSize = reader.Take<uint16_t>();
  file.flags = reader.Take<uint16_t>();
  file.preallocatedPages = reader.Take<uint16_t>();
  file.version = reader.Take<uint8_t>();
  file.reservedPointers = reader.Take<uint8_t>();
  const uint8_t keys = reader.Take<uint8_t>();
  const uint8_t sequences = reader.Take<uint8_t>();
  for (int i = 0; i < keys; ++i) file.keys.push_back(TakeKey(reader));
  for (int i = 0; i < sequences; ++i) {
    const auto block = reader.TakeBytes(kSequenceSize);
    std::copy(block.begin(), block.end(), file.sequences.emplace_back().block.begin());
  }
  return file;
}

}  // namespace

std::vector<uint8_t> StoreSpec(const FileSpec& file) {
  std::vector<uint8_t> out;
  PutHead(out, file);
  for (const KeySpec& key : file.keys) PutKey(out, key);
  for (const CollatingSequence& sequence : file.sequences) {
    out.insert(out.end(), sequence.block.begin(), sequence.block.end());
  }
  const auto length = static_cast<uint32_t>(out.size() + sizeof(uint32_t));
  std::memcpy(out.data() + kLengthAt, &length, sizeof length);
  Put(out, Checksum(out));
  return out;
}

bool LoadSpec(std::span<const uint8_t> bytes, FileSpec& file) {
  ByteReader reader(bytes);
  if (reader.Take<uint32_t>() != kSpecMark || reader.Take<uint32_t>() != bytes.size()) return false;
  FileSpec spec = TakeFile(reader);
  const uint32_t sum = reader.Take<uint32_t>();
  if (reader.Failed() || !reader.Rest().empty()) return false;
  if (sum != Checksum(bytes.first(bytes.size() - sizeof sum))) return false;
  if (CheckSpec(spec) != kOk) return false;
  file = std::move(spec);
  return true;
}

}  // namespace btrieve
