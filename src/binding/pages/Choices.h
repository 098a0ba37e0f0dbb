// What a property page offers a designer to choose from: the database controls on the form of a
// window, and out of their dictionaries the tables, fields and keys, each list by what was chosen
// in the one above it. Nothing is asked of the record manager and nothing fails: where a name leads
// nowhere, or the control has no dictionary, the list is empty.
//
// Names are code page 932 and compare exactly. A control lies on the form of a window as
// ControlRegistry.h tells.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/WindowText.h"

namespace qrn {

using NameList = std::vector<std::string>;

// In the order of registration.
NameList FillSources(WindowHandle form);

// In the dictionary's order.
NameList FillTables(WindowHandle form, std::string_view source);
NameList FillFields(WindowHandle form, std::string_view source, std::string_view table);

// The named keys first, then the others, each by the field of its first segment, in their order.
NameList FillIndexes(WindowHandle form, std::string_view source, std::string_view table);

}  // namespace qrn
