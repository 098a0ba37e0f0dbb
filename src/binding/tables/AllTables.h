// Everything that the type library and the registration hold.
#pragma once

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

namespace qrn {

// In the order in which the classes are registered.
inline constexpr const ControlTable* kControls[] = {
    &kQRNBtrTable,       &kQRNEditTable,    &kQRNBtnTable,     &kQRNComboBoxTable,
    &kQRNListBoxTable,   &kQRNHScrollTable, &kQRNVScrollTable, &kQRNCheckTable,
    &kQRNOptBtnTable,    &kQRNGridTable,    &kQRNPicTable,     &kQRNExComboBoxTable,
    &kQRNExListBoxTable,
};

// The help file of the library keeps its older name; the pages name another.
inline constexpr ole::LibraryTable kLibrary{
    .name = "QRNBTRLib",
    .id = MakeGuid("0899ACE4-82FE-42E6-A344-54FA80006796"),
    .major = 1,
    .minor = 0,
    .description = u"Quorin Controls for Btrieve",
    .helpFile = u"qrnbt340.hlp",
    .controls = kControls,
    .enumerations = kEnumerations,
};

inline constexpr Guid kApplicationId = MakeGuid("4EAB4FF0-0372-4F60-9A1E-9499321F5DD8");
inline constexpr uint16_t kApplicationScript = 272;
// Of kCQRNBtrPpg; nothing runs it.
inline constexpr uint16_t kOlderPageScript = 118;

}  // namespace qrn
