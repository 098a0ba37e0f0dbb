#include "host/container/CompanionFiles.h"

#include <olectl.h>

#include <cstring>
#include <stdexcept>

#include "com/Handles.h"
#include "host/form/FrxFile.h"
#include "host/form/SourceText.h"

namespace qrn::host {
namespace {

Com<IStream> StreamOf(std::string_view bytes) noexcept {
  Com<IStream> stream;
  com::GlobalBlock block(GlobalAlloc(GMEM_MOVEABLE, bytes.size()));
  if (!block) return stream;
  if (void* memory = GlobalLock(block.get())) {
    std::memcpy(memory, bytes.data(), bytes.size());
    GlobalUnlock(block.get());
  }
  // With its last reference the stream frees the block.
  if (SUCCEEDED(CreateStreamOnHGlobal(block.get(), TRUE, stream.put()))) {
    static_cast<void>(block.release());
  }
  return stream;
}

std::string Place(const form::FileReference& reference) {
  char offset[16];
  std::snprintf(offset, sizeof offset, "%04X", reference.offset);
  return reference.fileName + " at " + offset;
}

}  // namespace

Com<IPictureDisp> LoadPicture(std::string_view imageFile) noexcept {
  Com<IPictureDisp> picture;
  const Com<IStream> stream = StreamOf(imageFile);
  if (stream) {
    OleLoadPicture(stream.get(), static_cast<LONG>(imageFile.size()), FALSE, IID_IPictureDisp,
                   picture.putVoid());
  }
  return picture;
}

const std::string& CompanionFiles::Bytes(const form::FileReference& reference) {
  // A path in the reference counts only by its last part.
  std::string name = reference.fileName;
  name.erase(0, name.find_last_of("\\/:") + 1);
  const auto known = files_.find(name);
  if (known != files_.end()) return known->second;
  return files_.emplace(name, form::ReadWholeFile(folder_ + "/" + name)).first->second;
}

Com<IPictureDisp> CompanionFiles::Picture(const form::FileReference& reference) {
  const std::optional<std::string_view> image = form::PictureAt(Bytes(reference), reference.offset);
  if (!image) throw std::runtime_error("there is no picture in " + Place(reference));
  if (image->empty()) return {};
  Com<IPictureDisp> picture = LoadPicture(*image);
  if (!picture)
    throw std::runtime_error("the picture in " + Place(reference) + " cannot be loaded");
  return picture;
}

std::string CompanionFiles::Text(const form::FileReference& reference) {
  std::optional<std::string> text = form::TextAt(Bytes(reference), reference.offset);
  if (!text) throw std::runtime_error("there is no text in " + Place(reference));
  return std::move(*text);
}

}  // namespace qrn::host
