// A storage of the system's own, on disk or in memory.
#pragma once

#include <ole2.h>

#include "com/Com.h"

namespace qrn::test {

class SystemStorage {
 public:
  explicit SystemStorage(bool onDisk) { onDisk ? MakeFile() : MakeInMemory(); }

  IStorage* get() const { return storage_.get(); }

 private:
  static constexpr DWORD kMode = STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE;

  // A temporary file, which goes with the storage.
  void MakeFile() { StgCreateDocfile(nullptr, kMode | STGM_DELETEONRELEASE, 0, storage_.put()); }
  void MakeInMemory() {
    com::Com<ILockBytes> memory;
    CreateILockBytesOnHGlobal(nullptr, TRUE, memory.put());
    StgCreateDocfileOnILockBytes(memory.get(), kMode, 0, storage_.put());
  }

  com::Com<IStorage> storage_;
};

}  // namespace qrn::test
