// A layer in front of another one's files that passes every call on: who makes a layer of his own
// replaces what he does differently.
#pragma once

#include <sqlite3.h>

#include <cstring>

namespace btrieve {

// `Own` is what the layer keeps of a file; it begins with a sqlite3_file, and the file of the layer
// below stands behind it.
template <class Own>
class PassThrough {
 public:
  static sqlite3_file* Below(sqlite3_file* file) noexcept {
    return reinterpret_cast<sqlite3_file*>(reinterpret_cast<Own*>(file) + 1);
  }
  // Version 2: pages are never mapped.
  static constexpr sqlite3_io_methods Methods() noexcept {
    return {2,
            Pass<&sqlite3_io_methods::xClose>,
            Pass<&sqlite3_io_methods::xRead>,
            Pass<&sqlite3_io_methods::xWrite>,
            Pass<&sqlite3_io_methods::xTruncate>,
            Pass<&sqlite3_io_methods::xSync>,
            Pass<&sqlite3_io_methods::xFileSize>,
            Pass<&sqlite3_io_methods::xLock>,
            Pass<&sqlite3_io_methods::xUnlock>,
            Pass<&sqlite3_io_methods::xCheckReservedLock>,
            Pass<&sqlite3_io_methods::xFileControl>,
            Pass<&sqlite3_io_methods::xSectorSize>,
            Pass<&sqlite3_io_methods::xDeviceCharacteristics>,
            Pass<&sqlite3_io_methods::xShmMap>,
            Pass<&sqlite3_io_methods::xShmLock>,
            Pass<&sqlite3_io_methods::xShmBarrier>,
            Pass<&sqlite3_io_methods::xShmUnmap>,
            nullptr,
            nullptr};
  }
  // Opens the file below. The layer's own part is all zero then, without methods.
  static int Open(sqlite3_vfs* below, const char* name, sqlite3_file* file, int flags,
                  int* outFlags) noexcept {
    std::memset(static_cast<void*>(file), 0, sizeof(Own) + sizeof(sqlite3_file));
    return below->xOpen(below, name, Below(file), flags, outFlags);
  }
  // Below's functions, and room for both files.
  static sqlite3_vfs Over(const sqlite3_vfs& below, const char* name) noexcept {
    sqlite3_vfs layer = below;
    layer.iVersion = 2;
    layer.szOsFile += static_cast<int>(sizeof(Own));
    layer.zName = name;
    layer.pNext = nullptr;
    return layer;
  }

 private:
  template <class Method>
  struct Passing;
  template <class Result, class... Arguments>
  struct Passing<Result (*sqlite3_io_methods::*)(sqlite3_file*, Arguments...)> {
    template <auto Method>
    static Result Call(sqlite3_file* file, Arguments... arguments) {
      return (Below(file)->pMethods->*Method)(Below(file), arguments...);
    }
  };
  template <auto Method>
  static constexpr auto Pass = &Passing<decltype(Method)>::template Call<Method>;
};

}  // namespace btrieve
