#include "design/ObjectTable.h"

#include <initializer_list>

namespace qrn::design {
namespace {

// In the order in which the classes are registered.
constexpr std::initializer_list<ole::ClassRow> kObjects = {};

}  // namespace

std::span<const ole::ClassRow> Objects() noexcept { return {kObjects.begin(), kObjects.size()}; }

}  // namespace qrn::design
