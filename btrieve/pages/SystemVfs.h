// SQLite's own file layer, set up for the system that it runs on.
#pragma once

namespace btrieve {

// To be called once, before the first file is opened. False when it cannot be set up.
bool SetUpSystemVfs() noexcept;

}  // namespace btrieve
