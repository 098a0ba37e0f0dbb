// A data file that this process keeps to itself from the outside of calls, as who puts another file
// in its place must: nobody opens it, also while its storage is closed, until this goes.
#pragma once

#include <memory>
#include <string>

#include "btrieve/locks/LockSpace.h"
#include "btrieve/storage/Storage.h"

namespace btrieve {

class SoleFile {
 public:
  // Opens the file as Open in exclusive mode does, with its statuses; whatever others have left in
  // it is settled and on stable storage. Also 30 for what is kept elsewhere or of another make, 85
  // while a transaction over several files is not settled. `path` is absolute. For a process that
  // has no file open here.
  [[nodiscard]] static Status Open(const std::string& path, std::unique_ptr<SoleFile>& file);

  const std::string& Path() const noexcept { return path_; }
  // Read, in its newest state.
  Storage& Base() noexcept { return base_; }
  // Closes the storage: the file is then whole by itself, and may be given another name. 85 when a
  // log stays beside it. Nothing but this may be done with it afterwards.
  [[nodiscard]] Status Rest();

 private:
  explicit SoleFile(std::string path) : path_(std::move(path)) {}
  Status Take();

  std::string path_;
  LockSpace space_;  // outlives the storage: its handle must be closed last
  HeldByte gate_;
  Storage base_;
};

}  // namespace btrieve
