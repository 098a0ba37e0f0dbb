// Between the record manager and the disk: each call on a folder's files is told to a listener,
// which may have it fail. In this process only.
#pragma once

#include "Calls.h"

namespace btrieve::test {

enum class DiskKind { Make, Read, Write, Truncate, Sync, SyncFolder, Remove, Rename, Lock };

struct DiskCall {
  DiskKind kind;
  std::string path;
  std::string to = {};  // Rename
  uint64_t offset = 0;  // Write, Read; the new size of a Truncate; the byte to Lock
  Bytes bytes = {};     // Write
  bool grows = false;   // Write: behind the file's end
  bool fails = false;   // Sync
};

class DiskListener {
 public:
  virtual ~DiskListener() = default;
  // 0, or the errno the call is to fail with.
  virtual int Allow(const DiskCall&) { return 0; }
  virtual void Done(const DiskCall&) {}
};

// One at a time; calls come one after the other, from any thread.
class DiskTap : qrn::test::Pinned {
 public:
  DiskTap(const std::filesystem::path& folder, DiskListener& listener);
  ~DiskTap();
};

}  // namespace btrieve::test
