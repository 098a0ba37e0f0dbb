// Class ids of the property pages: the controls' own, and the system's stock pages.
#pragma once

#include "ole/tables/Guid.h"

namespace qrn {

// clang-format off
inline constexpr ole::Guid kQRNBtrPpg         = ole::MakeGuid("57EB07BC-F12A-4D0B-9109-C22B498B4D17");
inline constexpr ole::Guid kQRNBtnPpg         = ole::MakeGuid("085EB8FF-01C0-4691-9209-C26C56916E2A");
inline constexpr ole::Guid kQRNEditPpg        = ole::MakeGuid("C5F5732B-398F-4F30-ADE0-1951C32D8F06");
inline constexpr ole::Guid kQRNListBoxPpg     = ole::MakeGuid("B1559A64-525E-4C82-A5A2-735D7849C763");
inline constexpr ole::Guid kQRNComboBoxPpg    = ole::MakeGuid("5DE3B997-6383-400A-B47E-92EC0D32094E");
inline constexpr ole::Guid kQRNCheckPpg       = ole::MakeGuid("C78BF19D-0670-430E-BE2B-DA9759CD2C76");
inline constexpr ole::Guid kQRNOptBtnPpg      = ole::MakeGuid("4EAB35E3-0937-4B31-BCC3-CEA5560EAA16");
inline constexpr ole::Guid kQRNPicPpg         = ole::MakeGuid("A9DDC0DC-3635-465A-8A0B-2255F2BD2072");
inline constexpr ole::Guid kQRNHScrollPpg     = ole::MakeGuid("82186A6C-3DBB-4965-A4A0-777C49607C84");
inline constexpr ole::Guid kQRNVScrollPpg     = ole::MakeGuid("3DB5E057-7786-436F-82C6-7D7E00D18F89");
inline constexpr ole::Guid kQRNGridPpg        = ole::MakeGuid("BA1F22CF-B21D-41CA-9E31-ACDC863491A7");
inline constexpr ole::Guid kQRNExComboBoxPpg  = ole::MakeGuid("9F9A42B8-158C-49C1-B52A-C8983D478283");
inline constexpr ole::Guid kQRNExListBoxPpg   = ole::MakeGuid("B5B7D961-45EC-4039-8A20-1BDBDFEBD780");
inline constexpr ole::Guid kQRNExComboBoxPpg2 = ole::MakeGuid("B5229413-4CF2-4C30-923A-B27A19F11B71");
inline constexpr ole::Guid kQRNExListBoxPpg2  = ole::MakeGuid("3A8E9E19-8FBF-4BBE-B6CA-CFB81DC60640");
// A script of this older page stays; no class of it exists.
inline constexpr ole::Guid kCQRNBtrPpg        = ole::MakeGuid("66858EB4-529F-40E4-9BEC-342A18B8246F");
inline constexpr ole::Guid kStockFontPage    = ole::MakeGuid("7EBDAAE0-8120-11CF-899F-00AA00688B10");
inline constexpr ole::Guid kStockColorPage   = ole::MakeGuid("7EBDAAE1-8120-11CF-899F-00AA00688B10");
inline constexpr ole::Guid kStockPicturePage = ole::MakeGuid("7EBDAAE2-8120-11CF-899F-00AA00688B10");
// clang-format on

// One page of our own: its class name, registration script, dialog and class id.
struct PageRow {
  const char* className;
  uint16_t script;
  uint16_t dialog;
  ole::Guid classId;
};

// clang-format off
inline constexpr PageRow kPages[] = {
    {"QRNBtrPpg",         136, 137, kQRNBtrPpg},
    {"QRNBtnPpg",         164, 165, kQRNBtnPpg},
    {"QRNEditPpg",        169, 197, kQRNEditPpg},
    {"QRNListBoxPpg",     202, 203, kQRNListBoxPpg},
    {"QRNComboBoxPpg",    211, 212, kQRNComboBoxPpg},
    {"QRNCheckPpg",       216, 217, kQRNCheckPpg},
    {"QRNOptBtnPpg",      221, 222, kQRNOptBtnPpg},
    {"QRNPicPpg",         226, 227, kQRNPicPpg},
    {"QRNHScrollPpg",     231, 232, kQRNHScrollPpg},
    {"QRNVScrollPpg",     236, 237, kQRNVScrollPpg},
    {"QRNGridPpg",        241, 242, kQRNGridPpg},
    {"QRNExComboBoxPpg",  254, 255, kQRNExComboBoxPpg},
    {"QRNExListBoxPpg",   260, 261, kQRNExListBoxPpg},
    {"QRNExComboBoxPpg2", 265, 266, kQRNExComboBoxPpg2},
    {"QRNExListBoxPpg2",  270, 271, kQRNExListBoxPpg2},
};
// clang-format on

}  // namespace qrn
