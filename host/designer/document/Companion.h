// The companion file (.frx) of a form: records that lines of the form refer to by their offsets.
//
// Records are only ever added, at the end: a kept one stays byte for byte where it was, so an
// offset once given stays right through every undo and every save, and a form saved before still
// reads the file. What no line refers to any more stays in the file until Visual Basic saves the
// form, which writes companions anew.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "host/form/FormFile.h"

namespace qrn::designer {

class Companion {
 public:
  // `fileBytes` are the file's; empty if there is none yet. `name` is the file's last part, UTF-8.
  explicit Companion(std::string name, std::string fileBytes = {});

  const std::string& name() const noexcept { return name_; }
  // What is saved is written under `name` from now on; lines that name an older one still mean this
  // file.
  void Rename(std::string name);
  bool IsName(std::string_view fileName) const noexcept;

  // Both add a record at the end and give the reference that leads to it. A picture is an image
  // file's bytes (bitmap, icon, metafile, GIF, JPEG); a control of a module has its pictures with
  // their class id before them. A text is bytes of code page 932, at most 65,535: nothing for a
  // longer one.
  form::FileReference AddPicture(std::string_view image, bool ofModule);
  std::optional<form::FileReference> AddText(std::string_view bytes, bool ofModule);
  // A record's bytes as another companion has them.
  form::FileReference AddRecord(std::string_view record, bool isText);

  // Everything from the record's start to the end of the file; empty beyond it.
  std::string_view From(uint32_t offset) const noexcept;
  const std::string& bytes() const noexcept { return bytes_; }

  // The file as it is written when lines refer to `offsets`: what was read, and added records up to
  // the last of them that is referred to.
  std::string_view FileFor(const std::set<uint32_t>& offsets) const noexcept;

 private:
  std::set<std::string> names_;  // lower case: this one and those before it
  std::string name_;
  std::string bytes_;
  size_t readSize_;
  std::set<uint32_t> starts_;  // of added records
};

}  // namespace qrn::designer
