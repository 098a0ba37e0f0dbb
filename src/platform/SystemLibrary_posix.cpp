#include <dlfcn.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <string>

#include "platform/SystemLibrary.h"

namespace qrn {
namespace {

std::string DirectoryOf(const std::string& path) { return path.substr(0, path.find_last_of('/')); }

std::string ProgramDirectory() {
  char path[PATH_MAX];
  const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
  return length > 0 ? DirectoryOf({path, static_cast<size_t>(length)}) : std::string();
}

std::string OwnDirectory() {
  Dl_info info{};
  char path[PATH_MAX];
  if (dladdr(reinterpret_cast<void*>(&OwnDirectory), &info) == 0 ||
      realpath(info.dli_fname, path) == nullptr) {
    return {};
  }
  return DirectoryOf(path);
}

void* LoadFrom(const std::string& directory, const char* name) {
  if (directory.empty()) return nullptr;
  return dlopen((directory + "/lib" + name + ".so").c_str(), RTLD_NOW | RTLD_LOCAL);
}

}  // namespace

SystemLibrary::SystemLibrary(const char* name) : handle_(LoadFrom(ProgramDirectory(), name)) {
  if (handle_ == nullptr) handle_ = LoadFrom(OwnDirectory(), name);
}

SystemLibrary::AnyFunction SystemLibrary::FindAddress(const char* functionName,
                                                      unsigned) const noexcept {
  if (handle_ == nullptr) return nullptr;
  return reinterpret_cast<AnyFunction>(dlsym(handle_, functionName));
}

bool LoadedModulePath(const char*, std::span<char>) noexcept { return false; }

}  // namespace qrn
