// A form file read and made ready: what the form is made from, each time it is loaded.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "host/container/CompanionFiles.h"
#include "host/form/FormFile.h"
#include "host/form/VbCode.h"

namespace qrn::host {

struct FormSource {
  std::string path;  // as given, UTF-8: mistakes are told under it
  form::FormFile file;
  form::ScriptCode code;
  std::map<std::string, std::string> companions;  // bytes by name: those that no file is read for

  std::string Folder() const;  // of the file, without a separator at the end; "." if none is given
  std::string Name() const { return file.Name(); }
  CompanionFiles Companions() const { return CompanionFiles(Folder(), companions); }
};

// Reads the file and rewrites its code. Throws form::FileRefused with every mistake, and
// std::runtime_error when the file cannot be read at all.
std::shared_ptr<const FormSource> ReadFormSource(const std::string& path);

// The same from bytes and companion files that need not be on the disk; `path` tells where they
// belong.
std::shared_ptr<const FormSource> MakeFormSource(const std::string& path, std::string_view bytes,
                                                 std::map<std::string, std::string> companions);

}  // namespace qrn::host
