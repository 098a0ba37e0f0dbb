#include "platform/Memory.h"

namespace qrn {

HeapState SystemHeapState() { return kHeapGood; }

}  // namespace qrn
