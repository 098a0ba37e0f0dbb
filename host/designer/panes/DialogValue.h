// The value of a property by the system's dialog for its kind: a colour, a font, a picture.
#pragma once

#include "host/designer/model/PropertyList.h"
#include "host/designer/panes/Workplace.h"

namespace qrn::designer {

// Asks, and gives the answer to all that is selected; a file that is no picture is told. Nothing
// happens where the user does not want to.
Refusal EnterByDialog(Workplace& place, const PropertyRow& row);

}  // namespace qrn::designer
