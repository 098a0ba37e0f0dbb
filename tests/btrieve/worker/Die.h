// Death as the system deals it out: nothing is tidied up.
#pragma once

namespace btrieve::test {

[[noreturn]] void Die() noexcept;

}  // namespace btrieve::test
