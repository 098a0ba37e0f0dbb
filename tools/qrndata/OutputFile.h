// A text file that takes its place only when it is whole.
#pragma once

#include <filesystem>
#include <fstream>
#include <ostream>

namespace qrndata {

// Written under another name in the same folder ("orders.csv.1.part") and renamed by Finish, so
// that what stood there before is whole until then. What is no regular file (a device, a pipe) is
// written directly.
class OutputFile {
 public:
  // Throws Failure (kSystem) that names the file when it cannot be written.
  explicit OutputFile(const std::filesystem::path& path);
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  ~OutputFile();  // without Finish nothing has changed

  std::ostream& Stream() noexcept { return file_; }

  // Throws Failure (kSystem) when not everything could be written; nothing has changed then.
  void Finish();

 private:
  [[noreturn]] void Fail() const;

  std::filesystem::path path_;    // as given, for messages
  std::filesystem::path target_;  // links followed
  std::filesystem::path side_;    // empty: written directly, or finished
  std::ofstream file_;
};

}  // namespace qrndata
