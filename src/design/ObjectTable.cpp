#include "design/ObjectTable.h"

#include <initializer_list>

#include "binding/QRNBtr.h"
#include "binding/tables/QRNBtrTable.h"

namespace qrn::design {
namespace {

// In the order in which the classes are registered.
constexpr std::initializer_list<ole::ClassRow> kObjects = {
    ole::ControlRow<kQRNBtrTable, CQRNBtr>(),
};

}  // namespace

std::span<const ole::ClassRow> Objects() noexcept { return {kObjects.begin(), kObjects.size()}; }

}  // namespace qrn::design
