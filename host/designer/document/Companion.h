// The companion file (.frx) of a form: records that lines of the form refer to by their offsets.
//
// What was read is kept byte for byte at its place. Records that are added count on from its end,
// in the order in which they were added, and are never taken away: an offset once given stays right
// through every undo. On the disk only those stand that the form refers to (see CompanionImage);
// the form's lines are written with the places that they have there.
//
// A record that was saved keeps its place in the file while others are added, so that a form saved
// before still reads it. Space of records that no line refers to any more is given back when
// nothing comes behind it; otherwise Visual Basic does, which writes companions anew.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/form/FormFile.h"

namespace qrn::designer {

// The file as it is to be written, and where added records stand in it, by their offsets here.
struct CompanionImage {
  std::string bytes;
  std::map<uint32_t, uint32_t> places;
  std::vector<uint32_t> order;  // added records, as they follow one another
  bool shrinks = false;         // the form must be put in place before it
};

class Companion {
 public:
  // `fileBytes` are the file's; empty if there is none yet. `name` is the file's last part, UTF-8.
  explicit Companion(std::string name, std::string fileBytes = {});

  const std::string& name() const noexcept { return name_; }
  // What is saved is written under `name` from now on; lines that name an older one still mean this
  // file.
  void Rename(std::string name);
  bool IsName(std::string_view fileName) const noexcept;

  // Each adds a record and gives the reference that leads to it. A picture is an image file's bytes
  // (bitmap, icon, metafile, GIF, JPEG); a control of a module has its pictures with their class id
  // before them. A text is bytes of code page 932, at most 65,535: nothing for a longer one;
  // `hasSign` tells whether its reference has the $ in front. The last adds a record's bytes as
  // another companion has them.
  form::FileReference AddPicture(std::string_view image, bool ofModule);
  std::optional<form::FileReference> AddText(std::string_view bytes, bool hasSign);
  form::FileReference AddRecord(std::string_view record, bool isText);

  // An added record, or everything from the offset to the end of what was read; empty beyond it.
  std::string_view From(uint32_t offset) const noexcept;
  // What was read and all that was added.
  const std::string& bytes() const noexcept { return bytes_; }

  CompanionImage Image(const std::set<uint32_t>& offsets) const;
  // The image is on the disk now.
  void Saved(const CompanionImage& image) { saved_ = image.order; }

 private:
  std::set<std::string> names_;  // lower case: this one and those before it
  std::string name_;
  std::string bytes_;
  size_t readSize_;
  std::map<uint32_t, size_t> added_;  // sizes of records by their offsets
  std::vector<uint32_t> saved_;       // those on the disk, in order
};

}  // namespace qrn::designer
