#include "btrieve/LogExam.h"

#include <bit>
#include <memory>
#include <vector>

#include "btrieve/HostFile.h"
#include "btrieve/LogFormat.h"
#include "btrieve/Sqlite.h"

namespace btrieve {
namespace {

// The log's bytes, through SQLite's own access to the system.
class LogReader {
 public:
  explicit LogReader(const std::string& path) : name_(SqliteName(path)) {
    sqlite3_vfs* vfs = sqlite3_vfs_find(nullptr);
    memory_ = std::make_unique<uint64_t[]>(static_cast<size_t>(vfs->szOsFile) / 8 + 1);
    const int result =
        vfs->xOpen(vfs, name_.c_str(), File(), SQLITE_OPEN_READONLY | SQLITE_OPEN_WAL, nullptr);
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
    if (size_ <= kLogHeadSize + kLogHeaderSize) return true;  // no frame yet
    frames_ = (size_ - kLogHeadSize - kLogHeaderSize) / kFrameSize;
    std::vector<uint8_t> bytes(kLogHeaderSize);
    log_.Read(0, bytes);
    // It is on stable storage before the first frame is written.
    if (!header_.Load(bytes)) return frames_ == 0;
    CountValid();
    return valid_ >= SyncedFrames() && (valid_ == frames_ || !LosesCommits());
  }

 private:
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

}  // namespace btrieve
