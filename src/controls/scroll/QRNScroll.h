// QRNHScroll and QRNVScroll: the record scroll bar in its two orientations.
#pragma once

#include "controls/scroll/RecordBar.h"

namespace qrn {

class CQRNHScroll final : public RecordBar {
 public:
  CQRNHScroll();
};

class CQRNVScroll final : public RecordBar {
 public:
  CQRNVScroll();
};

}  // namespace qrn
