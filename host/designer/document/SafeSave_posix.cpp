#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

#include "host/designer/document/SafeSave.h"

namespace qrn::designer {
namespace {

class Descriptor {
 public:
  Descriptor(const std::string& path, int flags) noexcept
      : number_(open(path.c_str(), flags | O_CLOEXEC, 0666)) {}
  ~Descriptor() { Close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int get() const noexcept { return number_; }
  bool Close() noexcept {
    const int number = std::exchange(number_, -1);
    return number < 0 || close(number) == 0;
  }

 private:
  int number_;
};

std::string FolderOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

std::string Reason() { return std::strerror(errno); }

bool WriteAll(int file, std::string_view bytes) noexcept {
  while (!bytes.empty()) {
    const ssize_t done = write(file, bytes.data(), bytes.size());
    if (done < 0 && errno != EINTR) return false;
    if (done > 0) bytes.remove_prefix(static_cast<size_t>(done));
  }
  return true;
}

}  // namespace

std::string WriteWholeFile(const std::string& path, std::string_view bytes) {
  Descriptor file(path, O_WRONLY | O_CREAT | O_TRUNC);
  if (file.get() < 0) return Reason();
  const bool done = WriteAll(file.get(), bytes) && fsync(file.get()) == 0 && file.Close();
  return done ? std::string() : Reason();
}

std::string RenameFile(const std::string& from, const std::string& to) {
  if (rename(from.c_str(), to.c_str()) != 0) return Reason();
  // The name is on the disk when the folder is. A folder that cannot be flushed loses no file.
  const Descriptor folder(FolderOf(to), O_RDONLY | O_DIRECTORY);
  if (folder.get() >= 0) fsync(folder.get());
  return {};
}

void RemoveFile(const std::string& path) noexcept { unlink(path.c_str()); }

bool FileStands(const std::string& path) noexcept {
  struct stat facts {};
  return stat(path.c_str(), &facts) == 0;
}

std::string WhyNotWritable(const std::string& path) {
  struct stat facts {};
  if (stat(path.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode)) return std::strerror(EISDIR);
  const bool writable = access(FileStands(path) ? path.c_str() : FolderOf(path).c_str(), W_OK) == 0;
  return writable ? std::string() : Reason();
}

}  // namespace qrn::designer
