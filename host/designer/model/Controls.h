// Controls come onto the form, go, and move between containers and layers. Each function is one
// step.
#pragma once

#include <string>
#include <vector>

#include "host/designer/model/Design.h"
#include "host/designer/model/Places.h"

namespace qrn::designer {

struct NewControl {
  std::string library;
  std::string className;
  ControlId container = 0;
  Place place;  // in the container
};

// Puts a control in front of the others, named and numbered for the Tab key as Visual Basic does,
// its library's line at the file's head, and selects it. `*added`, which may be null, is its id.
Refusal AddControl(Design& design, const NewControl& control, ControlId* added = nullptr);

// Deletes controls with all that lies in them. Their code stays. The form is passed over.
Refusal DeleteControls(Design& design, const Ids& ids);

// Moves controls into a container, in front of what lies there; they keep their place on the
// form. Those that lie there already are passed over. Refused for a container that holds no
// controls or lies in one of them.
Refusal MoveInto(Design& design, const Ids& ids, ControlId container);

// In front of, or behind, the others of their container; among themselves they stay as they are.
Refusal BringToFront(Design& design, const Ids& ids);
Refusal SendToBack(Design& design, const Ids& ids);

// Those of `ids` that lie in no other of them, in the file's order; without the form.
Ids Outermost(const Design& design, const Ids& ids);

// Of a control that is deleted with all that lies in it.
std::vector<int32_t> TabIndexesIn(const Design& design, ControlId id);

}  // namespace qrn::designer
