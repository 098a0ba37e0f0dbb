// The properties of a control in a form file, as the control reads them.
#pragma once

#include <ocidl.h>

#include <set>
#include <span>
#include <string>

#include "com/Variant.h"
#include "host/container/ComObject.h"
#include "host/container/CompanionFiles.h"
#include "host/form/FormFile.h"

namespace qrn::host {

// The value of a property for a control: a text, a number, a font, a picture, or an object of the
// group's class that has read the group. Throws std::runtime_error with a plain reason.
com::Variant ValueOf(const form::Property& property, CompanionFiles& files);

// A bag over properties that outlive it. Names ignore case. A value is given in the type asked
// for; one that does not convert fails the read and is a mistake of its line. What the control
// never asks for is known afterwards.
class PropertyBag final : public ComObject<IPropertyBag> {
 public:
  PropertyBag(std::span<const form::Property> properties, CompanionFiles& files,
              form::Mistakes& mistakes)
      : properties_(properties), files_(files), mistakes_(mistakes) {}

  STDMETHODIMP Read(LPCOLESTR name, VARIANT* value, IErrorLog*) override;
  STDMETHODIMP Write(LPCOLESTR, VARIANT*) override { return E_NOTIMPL; }

  bool WasRead(const form::Property& property) const { return read_.contains(&property); }
  // What was asked for last and found; null at the start.
  const form::Property* Last() const noexcept { return last_; }

 private:
  HRESULT Convert(const form::Property& property, VARTYPE type, VARIANT* value);

  std::span<const form::Property> properties_;
  CompanionFiles& files_;
  form::Mistakes& mistakes_;
  std::set<const form::Property*> read_;
  const form::Property* last_ = nullptr;
};

}  // namespace qrn::host
