// A data file made beside the place that it is for, under a name that no other process takes, on a
// system or on another one that shares its folder. It is gone, with its logs, unless it has been
// put there.
#pragma once

#include <string>

#include "btrieve/locks/FileLocks.h"
#include "btrieve/system/HostFile.h"

namespace btrieve {

class AsideFile {
 public:
  explicit AsideFile(const std::string& target);
  ~AsideFile();
  AsideFile(const AsideFile&) = delete;
  AsideFile& operator=(const AsideFile&) = delete;

  const std::string& Path() const noexcept { return path_; }

  // `put` gives the closed file its name, which it takes with its gate closed, so that a log left
  // behind by another file can be removed before anybody takes it for this one's. 25 when that is
  // not on stable storage.
  template <class Put>
  [[nodiscard]] Status Place(Put put) {
    LockSpace space;
    if (const Status status = space.Open(path_)) return status;
    const HeldByte gate = HeldByte::Exclusive(space, lockbyte::kGate);
    if (const Status status = put(path_, target_)) return status;
    return ClearPlace();
  }
  // 59 where a file is.
  [[nodiscard]] Status PlaceAsNew() { return Place(PutAsNew); }

 private:
  [[nodiscard]] Status ClearPlace() const noexcept;

  std::string target_;
  std::string path_;
};

}  // namespace btrieve
