// Death as the system deals it out: nothing is tidied up.
#pragma once

namespace btrieve::test {

[[noreturn]] void Die() noexcept;
// The whole process stands still until another one lets it go on.
void Halt() noexcept;

}  // namespace btrieve::test
