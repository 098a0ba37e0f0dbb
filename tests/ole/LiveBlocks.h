// The count of blocks that this test program has from operator new.
#pragma once

namespace qrn::test {

long long LiveBlocks() noexcept;

}  // namespace qrn::test
