#include "design/ObjectTable.h"

#include <array>
#include <utility>

#include "binding/QRNBtr.h"
#include "binding/tables/QRNBtnTable.h"
#include "binding/tables/QRNBtrTable.h"
#include "binding/tables/QRNCheckTable.h"
#include "binding/tables/QRNEditTable.h"
#include "binding/tables/QRNExListTables.h"
#include "binding/tables/QRNGridTable.h"
#include "binding/tables/QRNListTables.h"
#include "binding/tables/QRNOptBtnTable.h"
#include "binding/tables/QRNPicTable.h"
#include "binding/tables/QRNScrollTables.h"
#include "controls/QRNBtn.h"
#include "controls/QRNEdit.h"
#include "controls/list/QRNComboBox.h"
#include "controls/list/QRNExComboBox.h"
#include "controls/list/QRNExListBox.h"
#include "controls/list/QRNListBox.h"
#include "controls/mark/QRNCheck.h"
#include "controls/mark/QRNOptBtn.h"
#include "controls/picture/QRNPic.h"
#include "controls/scroll/QRNScroll.h"
#include "design/pages/PropertyPage.h"
#include "grid/QRNGrid.h"

namespace qrn::design {
namespace {

// In the order in which the classes are registered.
constexpr std::array kControlRows = {
    ole::ControlRow<kQRNBtrTable, CQRNBtr>(),
    ole::ControlRow<kQRNEditTable, CQRNEdit>(),
    ole::ControlRow<kQRNBtnTable, CQRNBtn>(),
    ole::ControlRow<kQRNComboBoxTable, CQRNComboBox>(),
    ole::ControlRow<kQRNListBoxTable, CQRNListBox>(),
    ole::ControlRow<kQRNHScrollTable, CQRNHScroll>(),
    ole::ControlRow<kQRNVScrollTable, CQRNVScroll>(),
    ole::ControlRow<kQRNCheckTable, CQRNCheck>(),
    ole::ControlRow<kQRNOptBtnTable, CQRNOptBtn>(),
    ole::ControlRow<kQRNGridTable, CQRNGrid>(),
    ole::ControlRow<kQRNPicTable, CQRNPic>(),
    ole::ControlRow<kQRNExComboBoxTable, CQRNExComboBox>(),
    ole::ControlRow<kQRNExListBoxTable, CQRNExListBox>(),
};

template <size_t... I>
constexpr auto PageRows(std::index_sequence<I...>) {
  return std::array{
      ole::ClassRow{kPages[I].classId, &CreatePage<kLayouts[I]>, kPages[I].script}...};
}
constexpr auto kPageRows = PageRows(std::make_index_sequence<std::size(kPages)>());
constexpr auto kObjects = Join(kControlRows, kPageRows);

}  // namespace

std::span<const ole::ClassRow> Objects() noexcept { return kObjects; }

}  // namespace qrn::design
