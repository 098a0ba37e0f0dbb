#include "btrieve/pages/SystemVfs.h"

namespace btrieve {

bool SetUpSystemVfs() noexcept { return true; }

}  // namespace btrieve
