#include "btrieve/pages/LogExam.h"

#include <algorithm>
#include <bit>
#include <memory>
#include <vector>

#include "btrieve/pages/LogFormat.h"
#include "btrieve/pages/Sqlite.h"
#include "btrieve/system/HostFile.h"

namespace btrieve {
namespace {

// The log's bytes, through SQLite's own access to the system.
class LogReader {
 public:
  explicit LogReader(const std::string& path, int access = SQLITE_OPEN_READONLY)
      : name_(SqliteName(path)) {
    if (!RegisterCheckedVfs()) throw Failure{kNoCacheBuffer};  // SQLite may not have been started
    sqlite3_vfs* vfs = sqlite3_vfs_find(nullptr);
    memory_ = std::make_unique<uint64_t[]>(static_cast<size_t>(vfs->szOsFile) / 8 + 1);
    const int result = vfs->xOpen(vfs, name_.c_str(), File(), access | SQLITE_OPEN_WAL, nullptr);
    if (result != SQLITE_OK) ThrowResult(result);
  }
  ~LogReader() {
    if (File()->pMethods) File()->pMethods->xClose(File());
  }
  LogReader(const LogReader&) = delete;
  LogReader& operator=(const LogReader&) = delete;

  uint64_t SizeInFile() {
    sqlite3_int64 size = 0;
    if (const int result = File()->pMethods->xFileSize(File(), &size)) ThrowResult(result);
    return static_cast<uint64_t>(size);
  }
  // The size must cover it. Offsets count from the start of the file.
  void ReadInFile(uint64_t offset, std::span<uint8_t> out) {
    const int result = File()->pMethods->xRead(File(), out.data(), static_cast<int>(out.size()),
                                               static_cast<sqlite3_int64>(offset));
    if (result != SQLITE_OK) ThrowResult(result);
  }
  void WriteInFile(uint64_t offset, std::span<const uint8_t> bytes) {
    const int result = File()->pMethods->xWrite(
        File(), bytes.data(), static_cast<int>(bytes.size()), static_cast<sqlite3_int64>(offset));
    if (result != SQLITE_OK) ThrowResult(result);
  }
  void Read(uint64_t offset, std::span<uint8_t> out) {
    ReadInFile(kLogHeadSize + offset, out);
    MaskLog(out, offset);
  }

 private:
  sqlite3_file* File() noexcept { return reinterpret_cast<sqlite3_file*>(memory_.get()); }

  std::string name_;
  std::unique_ptr<uint64_t[]> memory_;
};

class Exam {
 public:
  explicit Exam(LogReader& log) : log_(log), size_(log.SizeInFile()) {}

  bool IsSound() {
    if (!HasFrames()) return true;
    // It is on stable storage before the first frame is written.
    if (!LoadHeader()) return frames_ == 0;
    CountValid();
    return valid_ >= SyncedFrames() && (valid_ == frames_ || !LosesCommits());
  }

  bool HoldsFirst(uint64_t frames) {
    if (frames == 0) return true;
    if (!HasFrames() || !LoadHeader()) return false;
    CountValid();
    return valid_ >= frames;
  }

 private:
  bool HasFrames() {
    if (size_ <= kLogHeadSize + kLogHeaderSize) return false;
    frames_ = (size_ - kLogHeadSize - kLogHeaderSize) / kFrameSize;
    return true;
  }
  bool LoadHeader() {
    std::vector<uint8_t> bytes(kLogHeaderSize);
    log_.Read(0, bytes);
    return header_.Load(bytes);
  }
  void ReadFrame(uint64_t number) { log_.Read(FrameOffset(number), frame_); }
  bool Follows(LogSum before) const {
    return FrameSalts(frame_) == header_.Salts() &&
           FrameSum(frame_) == header_.SumOf(frame_, before);
  }

  void CountValid() {
    LogSum sum = header_.Sum();
    for (; valid_ < frames_; ++valid_) {
      ReadFrame(valid_ + 1);
      if (!Follows(sum)) return;
      sum = FrameSum(frame_);
    }
  }

  uint64_t SyncedFrames() {
    std::vector<uint8_t> mark(kLogMarkSize);
    log_.ReadInFile(0, mark);
    const LogPlace synced = LoadLogMark(mark);
    return synced.salts == header_.Salts() ? synced.frames : 0;
  }

  // What a log that was begun anew has left, where the system has kept the new header and not yet
  // the cut before it. Salts are random, so those of two generations differ in many bits.
  bool IsOfOtherGeneration() const {
    constexpr int kFewBits = 4;
    return std::popcount(FrameSalts(frame_) ^ header_.Salts()) > kFewBits;
  }

  // The first frame that does not fit stands in frame_. Behind it each frame is judged by the sum
  // that the one before says it has.
  bool LosesCommits() {
    if (MissesWrites(frame_, FrameOffset(valid_ + 1))) return false;
    if (!IsOfOtherGeneration() && FrameCommits(frame_)) return true;
    LogSum before = FrameSum(frame_);
    for (uint64_t number = valid_ + 2; number <= frames_; ++number) {
      ReadFrame(number);
      if (Follows(before) && FrameCommits(frame_)) return true;
      before = FrameSum(frame_);
    }
    return false;
  }

  LogReader& log_;
  uint64_t size_;
  uint64_t frames_ = 0;  // whole ones in the file
  uint64_t valid_ = 0;   // of them, up to the first that does not fit
  LogHeader header_;
  std::vector<uint8_t> frame_ = std::vector<uint8_t>(kFrameSize);
};

}  // namespace

bool LogIsSound(const std::string& logPath) {
  if (SizeOfFile(logPath) == 0) return true;
  LogReader log(logPath);
  return Exam(log).IsSound();
}

bool WriteLogAgain(const std::string& logPath, uint64_t frames) {
  const uint64_t size = SizeOfFile(logPath);
  if (size == 0) return frames == 0;
  LogReader log(logPath, SQLITE_OPEN_READWRITE);
  if (!Exam(log).HoldsFirst(frames)) return false;
  std::vector<uint8_t> bytes(kFrameSize);
  for (uint64_t at = 0; at < size; at += bytes.size()) {
    bytes.resize(std::min<uint64_t>(kFrameSize, size - at));
    log.ReadInFile(at, bytes);
    log.WriteInFile(at, bytes);
  }
  return true;
}

}  // namespace btrieve
