// Libraries found at run time: an installed one first, else the one that was delivered beside this
// code. Nothing is ever loaded from the current directory, nor by a relative path.
#pragma once

#include <span>

namespace qrn {

class SystemLibrary {
 public:
  // `name` is bare, "w64btrv": Windows looks for w64btrv.dll in the system directory, in the
  // absolute directories of PATH, beside the program, then beside the module this code is linked
  // into; the native half for libw64btrv.so beside the program, then beside the shared library this
  // code is linked into.
  // A library once loaded stays until the process ends. Throws std::bad_alloc.
  explicit SystemLibrary(const char* name);

  bool IsLoaded() const noexcept { return handle_ != nullptr; }

  // The function of that name (on Windows, for an `ordinal` above 0, the one of that ordinal);
  // null when the library or the function is missing.
  template <class Function>
  Function Find(const char* functionName, unsigned ordinal = 0) const noexcept {
    return reinterpret_cast<Function>(FindAddress(functionName, ordinal));
  }

 private:
  using AnyFunction = void (*)();
  AnyFunction FindAddress(const char* functionName, unsigned ordinal) const noexcept;

  void* handle_ = nullptr;
};

// Stores the path of the library of that name if this process has it loaded (cut where it does not
// fit). False, and `out` untouched, if not; natively always.
bool LoadedModulePath(const char* name, std::span<char> out) noexcept;

}  // namespace qrn
