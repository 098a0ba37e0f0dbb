#include "btrieve/files/AsideFile.h"

#include "btrieve/pages/Sqlite.h"

namespace btrieve {

AsideFile::AsideFile(const std::string& target) : target_(target) {
  uint64_t number = 0;
  sqlite3_randomness(sizeof number, &number);
  path_ = DirectoryOf(target) + "~btr" + std::to_string(number) + ".tmp";
}

AsideFile::~AsideFile() {
  for (const char* tail : {"", "-wal", "-shm"}) RemoveFile(path_ + tail);
}

Status AsideFile::ClearPlace() const noexcept {
  RemoveFile(target_ + "-wal");
  RemoveFile(target_ + "-shm");
  return SyncFile(target_, true) ? kOk : kCreateError;
}

}  // namespace btrieve
