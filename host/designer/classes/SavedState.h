// What a live control would save of itself into a form: its lines, its fonts, its pictures.
#pragma once

#include <oaidl.h>

#include <string>
#include <vector>

#include "host/form/FormFile.h"

namespace qrn::designer {

struct SavedProperty {
  form::Property line;  // a value, or a group for a font
  // Of a picture, whose line has no value: the bytes of its image file; empty if it shows none.
  bool isPicture = false;
  std::string image = {};
};

// In the control's order; nothing of one that does not save itself by properties.
std::vector<SavedProperty> SavedStateOf(IUnknown* control);

// The same without fonts and pictures.
std::vector<form::Property> PlainLinesOf(IUnknown* control);

}  // namespace qrn::designer
