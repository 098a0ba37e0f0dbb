// A form file read and made ready: what the form is made from, each time it is loaded.
#pragma once

#include <memory>
#include <string>

#include "host/form/FormFile.h"
#include "host/form/VbCode.h"

namespace qrn::host {

struct FormSource {
  std::string path;  // as given, UTF-8: mistakes are told under it
  form::FormFile file;
  form::ScriptCode code;

  std::string Folder() const;  // of the file, without a separator at the end; "." if none is given
  std::string Name() const { return file.Name(); }
};

// Reads the file and rewrites its code. Throws form::FileRefused with every mistake, and
// std::runtime_error when the file cannot be read at all.
std::shared_ptr<const FormSource> ReadFormSource(const std::string& path);

}  // namespace qrn::host
