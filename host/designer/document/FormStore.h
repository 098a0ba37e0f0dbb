// A form and its companion file on the disk.
#pragma once

#include <memory>
#include <string>

#include "host/designer/document/Companion.h"
#include "host/designer/document/FormDocument.h"

namespace qrn::designer {

struct StoredForm {
  std::unique_ptr<FormDocument> document;
  std::unique_ptr<Companion> companion;
};

// Reads FORM.frm, and FORM.frx beside it if it is there. `path` is UTF-8. Throws
// std::runtime_error with a plain reason when a file cannot be read, form::FileRefused with every
// mistake when it is no form.
StoredForm OpenStoredForm(const std::string& path);

// Both files as they go together under a name: the form's references to its own companion carry
// that name, whatever name it had when they were written, and the records' places in the image.
struct FormImages {
  std::string form;
  CompanionImage companion;
  bool hasReferences = false;  // else the companion is not written
};
FormImages ImagesOf(const FormDocument& document, const Companion& companion,
                    const std::string& companionName);

// Writes both under `path`, the companion only if the form refers to it and it differs. Empty, or
// the reason: then the files are as they were.
std::string SaveStoredForm(const std::string& path, const FormDocument& document,
                           Companion& companion);

// `customers.frx` for `C:\forms\customers.frm`.
std::string CompanionNameOf(const std::string& formPath);

}  // namespace qrn::designer
