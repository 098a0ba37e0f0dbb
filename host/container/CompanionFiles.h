// What form files keep in their companion files (.frx): pictures and long texts.
#pragma once

#include <ocidl.h>

#include <map>
#include <string>

#include "host/container/ComObject.h"
#include "host/form/FormFile.h"

namespace qrn::host {

class CompanionFiles {
 public:
  // `folder` is the form file's, UTF-8, without a separator at the end. Files whose bytes are
  // given, by name, are not read.
  explicit CompanionFiles(std::string folder, std::map<std::string, std::string> given = {})
      : folder_(std::move(folder)), files_(std::move(given)) {}

  // The picture a reference leads to. Throws std::runtime_error with a plain reason when the file
  // is not there, holds no picture at that place, or one that the system does not load.
  Com<IPictureDisp> Picture(const form::FileReference& reference);
  // The text a reference leads to, UTF-8; throws as Picture does.
  std::string Text(const form::FileReference& reference);

 private:
  const std::string& Bytes(const form::FileReference& reference);

  std::string folder_;
  std::map<std::string, std::string> files_;
};

// A picture of an image file's bytes (bitmap, icon, metafile, GIF, JPEG); empty if the system does
// not take them.
Com<IPictureDisp> LoadPicture(std::string_view imageFile) noexcept;

}  // namespace qrn::host
