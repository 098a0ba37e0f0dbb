#include "platform/LoadedModule.h"

namespace qrn {

bool LoadedModulePath(const char*, std::span<char>) noexcept { return false; }

}  // namespace qrn
