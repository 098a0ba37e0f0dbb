// Names of controls: made new as Visual Basic does, and judged.
#pragma once

#include <set>
#include <string>
#include <string_view>

#include "host/designer/model/Design.h"

namespace qrn::designer {

inline constexpr int kLongestName = 40;  // characters

// `stem` and the least number, from 1, that gives a name nobody has; `taken` (lower case) are
// names that are given away besides those of the form. A stem that is no name gives "Control1".
std::string NewName(const Design& design, std::string_view stem,
                    const std::set<std::string>& taken = {});

// The stem for a control's class: what is known of it, else the class's own name.
std::string StemOf(const Design& design, std::string_view library, std::string_view className);

// Names of the form and everything on it, menus too, in lower case.
std::set<std::string> NamesOn(const Design& design);

// Letters, digits and underscores, not too long, no word of the language.
Refusal JudgeName(std::string_view name);

// Changes a control's or the form's name. Refused if another has it, whatever its case, unless both
// are elements of one array: the same class, with an index each. Code that speaks of the control
// stays as it is. The form's name is changed where it stands: in its first line and in VB_Name.
Refusal Rename(Design& design, ControlId id, const std::string& name);

// Makes the control an element of an array, or, with nothing, one that stands alone again.
Refusal PutIndex(Design& design, ControlId id, std::optional<int> index);

}  // namespace qrn::designer
