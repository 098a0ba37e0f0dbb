// Files that take their place only when they are whole.
#pragma once

#include <filesystem>
#include <fstream>
#include <ostream>

namespace qrndata {

// A file that is written under another name in the same folder ("orders.csv.1.part") and renamed by
// Finish, so that what stood there before is whole until then. What is no regular file (a device, a
// pipe) is written directly.
class SideFile {
 public:
  // Makes nothing yet. Throws Failure (kSystem) that names the file when it is write-protected.
  explicit SideFile(const std::filesystem::path& path);
  SideFile(const SideFile&) = delete;
  SideFile& operator=(const SideFile&) = delete;
  ~SideFile();  // without Finish nothing has changed

  // Where to write.
  const std::filesystem::path& Path() const noexcept { return side_.empty() ? target_ : side_; }
  bool IsDirect() const noexcept { return side_.empty(); }

  // Gives the file that is being written the permissions of the one in whose place it goes.
  void KeepPermissions() const noexcept;
  // The file is written and closed. Throws Failure (kSystem) when it cannot be put in place.
  void Finish();

  // Throws Failure (kSystem): the file, as it was named, cannot be written.
  [[noreturn]] void Fail() const;

 private:
  std::filesystem::path path_;    // as given, for messages
  std::filesystem::path target_;  // links followed
  std::filesystem::path side_;    // empty: written directly, or finished
};

// One that is written as a stream.
class OutputFile {
 public:
  // Throws Failure (kSystem) that names the file when it cannot be written.
  explicit OutputFile(const std::filesystem::path& path);

  std::ostream& Stream() noexcept { return file_; }

  // Throws Failure (kSystem) when not everything could be written; nothing has changed then.
  void Finish();

  // What has been written stays to be finished, whatever becomes of the rest: false when it could
  // not be written, as on a full disk.
  [[nodiscard]] bool KeepSoFar();
  // As Finish, with what has been kept.
  void FinishKept();

 private:
  SideFile place_;
  std::streamoff kept_ = 0;
  std::ofstream file_;  // closed before the place is left
};

}  // namespace qrndata
