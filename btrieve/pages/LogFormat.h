// How a log stands on disk: SQLite's write-ahead log, behind a head of our own, and masked.
//
// A page in the log carries its checksum, as one in the data file does. The head says how much of
// the log is known to be on stable storage. The mask sees to it that no 8 bytes of a log that has
// been written are all zero: where zeros stand, a power cut has kept a write from the disk. So what
// a power cut does to the end of a log is told from damage.
//
// Offsets are those SQLite works with, from the start of its own header, unless said otherwise.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "btrieve/pages/CheckedVfs.h"

namespace btrieve {

inline constexpr size_t kLogHeadSize = 512;     // bytes before SQLite's, in the file
inline constexpr size_t kLogHeaderSize = 32;    // SQLite's, at offset 0
inline constexpr size_t kFrameHeaderSize = 24;  // before each page
inline constexpr size_t kFrameSize = kFrameHeaderSize + kStoragePageSize;
inline constexpr size_t kLogWord = 8;  // bytes; every write begins and ends at a multiple of it

constexpr uint64_t FrameOffset(uint64_t frame) noexcept {  // counted from 1
  return kLogHeaderSize + (frame - 1) * kFrameSize;
}

// Masks or unmasks what stands at an offset.
void MaskLog(std::span<uint8_t> bytes, uint64_t offset) noexcept;
// Of unmasked bytes at a multiple of kLogWord: some were never written.
bool MissesWrites(std::span<const uint8_t> bytes, uint64_t offset) noexcept;

// A place in a log: its generation, which a log begun anew changes, and committed frames.
struct LogPlace {
  uint64_t salts = 0;
  uint32_t frames = 0;
};

// The start of the file: up to which place the log is on stable storage.
inline constexpr size_t kLogMarkSize = 32;
std::array<uint8_t, kLogMarkSize> StoreLogMark(const LogPlace& synced) noexcept;
// A place of no frames for bytes that are no such mark.
LogPlace LoadLogMark(std::span<const uint8_t> bytes) noexcept;

// What SQLite's log header and frames say. The integers are big-endian.
struct LogSum {
  uint32_t first = 0;
  uint32_t second = 0;
  bool operator==(const LogSum&) const = default;
};
class LogHeader {
 public:
  // False for bytes that are no header of a log of ours.
  [[nodiscard]] bool Load(std::span<const uint8_t> bytes) noexcept;
  uint64_t Salts() const noexcept { return salts_; }
  LogSum Sum() const noexcept { return sum_; }
  // The sum up to and with a frame that follows one of sum `before`.
  LogSum SumOf(std::span<const uint8_t> frame, LogSum before) const noexcept;

 private:
  LogSum Add(LogSum sum, std::span<const uint8_t> bytes) const noexcept;

  bool bigEndian_ = false;  // the words that are summed
  uint64_t salts_ = 0;
  LogSum sum_;
};

uint32_t FramePage(std::span<const uint8_t> frame) noexcept;
bool FrameCommits(std::span<const uint8_t> frame) noexcept;
uint64_t FrameSalts(std::span<const uint8_t> frame) noexcept;
LogSum FrameSum(std::span<const uint8_t> frame) noexcept;

}  // namespace btrieve
