// The table of field types: what each is called, what a record walk steps, and its two conversions.
#pragma once

#include <cstdint>

#include "core/DbTypes.h"
#include "fields/FieldAccess.h"

namespace qrn {

// Step of a record walk where it is no fixed number of bytes.
enum WalkStep : int32_t {
  kStepBySize = 0,    // the field's `Size`
  kStepByText = -1,   // the value's text and its NUL
  kStepUnknown = -2,  // no such type in a walk
};

struct FieldCodec {
  FieldType type;
  int32_t walkStep;   // bytes, or a WalkStep
  const char* name;   // null for a type without a name of its own
  FieldReader read;   // null: the type is not read
  FieldWriter write;  // null: the type is not written
};

// Null for a code that stands for no type.
const FieldCodec* FindFieldCodec(int32_t type) noexcept;

}  // namespace qrn
