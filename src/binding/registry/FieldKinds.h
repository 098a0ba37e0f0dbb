// How the text of a field gets into a control and out of it, by the control's kind.
#pragma once

#include <string>

#include "binding/CQuorin.h"
#include "core/DbTypes.h"

namespace qrn {

struct FieldKind {
  ControlType type;
  // False when the control gives no text: it does not count then. Null: it never does.
  bool (*read)(CQuorin& control, std::string& text);
  // The table may have gone meanwhile.
  void (*write)(CQuorin& control, const DbTableInfo& table, const char* text);
  void (*clear)(CQuorin& control);  // null: nothing to clear
};

// The row of a field control's kind, or of a list control's; null for kinds that show no field.
const FieldKind* FieldKindOf(ControlType type) noexcept;
const FieldKind* ListKindOf(ControlType type) noexcept;

}  // namespace qrn
