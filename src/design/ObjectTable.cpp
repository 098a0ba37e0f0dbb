#include "design/ObjectTable.h"

#include <initializer_list>

#include "binding/QRNBtr.h"
#include "binding/tables/QRNBtnTable.h"
#include "binding/tables/QRNBtrTable.h"
#include "binding/tables/QRNEditTable.h"
#include "controls/QRNBtn.h"
#include "controls/QRNEdit.h"

namespace qrn::design {
namespace {

// In the order in which the classes are registered.
constexpr std::initializer_list<ole::ClassRow> kObjects = {
    ole::ControlRow<kQRNBtrTable, CQRNBtr>(),
    ole::ControlRow<kQRNEditTable, CQRNEdit>(),
    ole::ControlRow<kQRNBtnTable, CQRNBtn>(),
};

}  // namespace

std::span<const ole::ClassRow> Objects() noexcept { return {kObjects.begin(), kObjects.size()}; }

}  // namespace qrn::design
