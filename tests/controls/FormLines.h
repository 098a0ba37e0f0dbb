// A control's properties as Visual Basic saves them: lines of a form file, and the companion file
// with the pictures.
#pragma once

#include <ocidl.h>

#include <string>
#include <vector>

#include "com/Object.h"

namespace qrn::test {

// Takes what a control saves.
class FormLines final : public com::Object<IPropertyBag> {
 public:
  std::string text;                // UTF-8
  std::vector<uint8_t> companion;  // of the file "form.frx"

  STDMETHODIMP Read(LPCOLESTR, VARIANT*, IErrorLog*) override { return E_NOTIMPL; }
  STDMETHODIMP Write(LPCOLESTR name, VARIANT* value) override;

 private:
  std::string FontLines(IFont& font);
  std::string PictureReference(IPicture& picture);
  std::string Lines(const std::string& name, VARIANT& value);
};

}  // namespace qrn::test
