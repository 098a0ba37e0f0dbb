#include "btrieve/pages/LogFormat.h"

#include <algorithm>
#include <cstring>

#include "btrieve/pages/BigEndian.h"
#include "btrieve/system/LittleEndian.h"

namespace btrieve {
namespace {

constexpr uint32_t kMagicLittle = 0x377F0682;
constexpr uint32_t kMagicBig = 0x377F0683;
constexpr uint32_t kLogVersion = 3007000;
constexpr uint64_t kMarkMagic = 0x31474F4C54425151;  // "QQBTLOG1"
constexpr size_t kMaskSize = 512;

constexpr uint64_t Mixed(uint64_t value) noexcept {
  value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9;
  value = (value ^ (value >> 27)) * 0x94D049BB133111EB;
  return value ^ (value >> 31);
}

// Nothing that programs write looks like it.
constexpr auto kMask = [] {
  std::array<uint8_t, kMaskSize> mask{};
  for (size_t at = 0; at < kMaskSize; ++at) {
    mask[at] = static_cast<uint8_t>(Mixed(0x9E3779B97F4A7C15 * (at / 8 + 1)) >> (at % 8 * 8));
  }
  return mask;
}();

template <class Value>
Value ValueAt(std::span<const uint8_t> bytes, size_t offset) noexcept {
  return LoadValue<Value>(&bytes[offset]);
}

// By words: builds that check every access take a byte for as dear as a word.
void ExclusiveOr(uint8_t* bytes, const uint8_t* mask, size_t count) noexcept {
  size_t at = 0;
  for (; at + sizeof(uint64_t) <= count; at += sizeof(uint64_t)) {
    StoreValue(bytes + at, LoadValue<uint64_t>(bytes + at) ^ LoadValue<uint64_t>(mask + at));
  }
  for (; at < count; ++at) bytes[at] ^= mask[at];
}

}  // namespace

void MaskLog(std::span<uint8_t> bytes, uint64_t offset) noexcept {
  for (size_t done = 0; done < bytes.size();) {
    const size_t start = (offset + done) % kMaskSize;
    const size_t run = std::min(kMaskSize - start, bytes.size() - done);
    ExclusiveOr(&bytes[done], &kMask[start], run);
    done += run;
  }
}

bool MissesWrites(std::span<const uint8_t> bytes, uint64_t offset) noexcept {
  for (size_t at = 0; at + kLogWord <= bytes.size(); at += kLogWord) {
    if (std::memcmp(&bytes[at], &kMask[(offset + at) % kMaskSize], kLogWord) == 0) return true;
  }
  return false;
}

std::array<uint8_t, kLogMarkSize> StoreLogMark(const LogPlace& synced) noexcept {
  const uint64_t words[] = {kMarkMagic, synced.salts, synced.frames,
                            Mixed(synced.salts + Mixed(synced.frames + kMarkMagic))};
  std::array<uint8_t, kLogMarkSize> bytes;
  std::memcpy(bytes.data(), words, sizeof words);
  return bytes;
}

LogPlace LoadLogMark(std::span<const uint8_t> bytes) noexcept {
  if (bytes.size() != kLogMarkSize) return {};
  const LogPlace place{ValueAt<uint64_t>(bytes, 8), ValueAt<uint32_t>(bytes, 16)};
  return std::ranges::equal(StoreLogMark(place), bytes) ? place : LogPlace();
}

bool LogHeader::Load(std::span<const uint8_t> bytes) noexcept {
  const uint32_t magic = Big32(&bytes[0]);
  bigEndian_ = magic == kMagicBig;
  salts_ = ValueAt<uint64_t>(bytes, 16);
  sum_ = Add({}, bytes.first(24));
  return (magic == kMagicLittle || magic == kMagicBig) && Big32(&bytes[4]) == kLogVersion &&
         Big32(&bytes[8]) == kStoragePageSize &&
         sum_ == LogSum{Big32(&bytes[24]), Big32(&bytes[28])};
}

LogSum LogHeader::Add(LogSum sum, std::span<const uint8_t> bytes) const noexcept {
  const auto word = [this](const uint8_t* at) {
    return bigEndian_ ? Big32(at) : LoadValue<uint32_t>(at);
  };
  for (const uint8_t *at = bytes.data(), *end = at + bytes.size(); at < end; at += 8) {
    sum.first += word(at) + sum.second;
    sum.second += word(at + 4) + sum.first;
  }
  return sum;
}

LogSum LogHeader::SumOf(std::span<const uint8_t> frame, LogSum before) const noexcept {
  return Add(Add(before, frame.first(8)), frame.subspan(kFrameHeaderSize));
}

uint32_t FramePage(std::span<const uint8_t> frame) noexcept { return Big32(&frame[0]); }
bool FrameCommits(std::span<const uint8_t> frame) noexcept { return Big32(&frame[4]) != 0; }
uint64_t FrameSalts(std::span<const uint8_t> frame) noexcept { return ValueAt<uint64_t>(frame, 8); }
LogSum FrameSum(std::span<const uint8_t> frame) noexcept {
  return {Big32(&frame[16]), Big32(&frame[20])};
}

}  // namespace btrieve
