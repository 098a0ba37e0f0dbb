// Which control a field gets, and how it is set: by the field's type, size and name.
#pragma once

#include <string>

#include "host/newform/Tables.h"

namespace qrn::newform {

enum class Control {
  None,     // nothing shows such a field
  Edit,     // one line
  Note,     // several lines
  Check,    // a mark
  Picture,  // the name of a picture's file, and below it the picture
  Display,  // a text that is only shown, since a box would spoil or cut the field when it is stored
};

// How a form sees that the record manager will keep what was typed.
enum class Judged {
  No,
  AsText,      // what would be stored reads as what was typed
  AsNumber,    // the same number
  AsFraction,  // the same number but for the last of its digits
};

struct FieldFit {
  Control control = Control::None;
  Judged judged = Judged::No;
  int characters = 0;  // half-width ones that are usually seen
  int maxLength = 0;   // bytes that may be typed, 0 without a limit
  int imeMode = 0;     // as QRNEdit counts them
  bool isNumber = false;
  bool isMoment = false;   // a date or a time
  bool isDressed = false;  // with separators that the field's type does not read
  std::string format;      // of QRNEdit
};

FieldFit FitOf(const Table& table, size_t field);

// The field holds text that names or describes something.
bool IsText(const Field& field) noexcept;

}  // namespace qrn::newform
