// The objects that a property page edits, of one class or of several, by the names of their
// properties.
#pragma once

#include <unknwn.h>

#include <cstdint>
#include <string>
#include <vector>

#include "com/Com.h"
#include "com/Variant.h"

namespace qrn::design {

class PageObjects {
 public:
  void Set(ULONG count, IUnknown** objects);

  // Of the first object, converted; empty text, 0 where it has no such property. Text is code
  // page 932.
  std::string Text(const char* property) const;
  int32_t Number(const char* property) const;
  // The property's dispatch id in the first object; DISPID_UNKNOWN without one.
  DISPID IdOf(const char* property) const;

  // The form that the first object stands on, as bound controls find it; null without one.
  HWND Form() const;

  // Puts a property of every object. One that has it not, or refuses, is passed over. The objects
  // may run handlers, which may set this to others.
  void Put(const char* property, const com::Variant& value) const;

 private:
  com::Variant Get(const char* property, VARTYPE type) const;

  std::vector<com::Com<IUnknown>> objects_;
};

}  // namespace qrn::design
