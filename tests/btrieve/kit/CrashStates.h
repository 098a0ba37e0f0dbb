// What a power cut may leave of a folder's files: a recording of all that was written to them, and
// at any point of it the states that a disk may be in. What a file was synced with is there; what
// was written since may be missing, may be there without what came before it, or be torn at 512
// bytes. Names come and go in their order, those since the folder's last sync perhaps not at all.
#pragma once

#include <map>
#include <mutex>

#include "Choices.h"
#include "DiskTap.h"

namespace btrieve::test {

class DiskRecording : public DiskListener {
 public:
  // Takes the folder's files as they are: they are on stable storage.
  explicit DiskRecording(const std::filesystem::path& folder);
  void Done(const DiskCall& call) override;
  // A sync that fails: what was written before it never gets to the disk, not even by a later one.
  void Lose(const DiskCall& sync);

  size_t Length() const;
  // The files after the first `length` calls, by name, as one of the states that a power cut may
  // leave them in.
  std::map<std::string, Bytes> StateAfter(size_t length, Choices& choices) const;

 private:
  std::map<std::string, Bytes> before_;
  std::vector<DiskCall> calls_;
  mutable std::mutex mutex_;
};

}  // namespace btrieve::test
