#include "host/designer/document/Companion.h"

#include <algorithm>

#include "host/form/SourceText.h"

namespace qrn::designer {
namespace {

constexpr std::string_view kPictureMark("lt\0\0", 4);
// Of the system's picture objects, {0BE35204-8F91-11CE-9DE3-00AA004BB851}, as it lies in memory.
constexpr std::string_view kPictureClass(
    "\x04\x52\xE3\x0B\x91\x8F\xCE\x11\x9D\xE3\x00\xAA\x00\x4B"
    "\xB8\x51",
    16);
constexpr size_t kShortTextLimit = 0xFE;
constexpr size_t kTextLimit = 0xFFFF;

std::string Number(size_t number, size_t size) {
  std::string bytes;
  for (size_t at = 0; at < size; ++at) bytes += static_cast<char>(number >> (8 * at) & 0xFF);
  return bytes;
}

}  // namespace

Companion::Companion(std::string name, std::string fileBytes)
    : bytes_(std::move(fileBytes)), readSize_(bytes_.size()) {
  Rename(std::move(name));
}

void Companion::Rename(std::string name) {
  names_.insert(form::LowerWord(name));
  name_ = std::move(name);
}

bool Companion::IsName(std::string_view fileName) const noexcept {
  return names_.contains(form::LowerWord(std::string(fileName)));
}

form::FileReference Companion::AddRecord(std::string_view record, bool isText) {
  const auto offset = static_cast<uint32_t>(bytes_.size());
  bytes_ += record;
  starts_.insert(offset);
  return {name_, offset, isText};
}

form::FileReference Companion::AddPicture(std::string_view image, bool ofModule) {
  std::string record(ofModule ? kPictureClass : std::string_view());
  record += kPictureMark;
  record += Number(image.size(), 4);
  record += image;
  return AddRecord(Number(record.size(), 4) + record, false);
}

std::optional<form::FileReference> Companion::AddText(std::string_view bytes, bool ofModule) {
  if (bytes.size() > kTextLimit) return std::nullopt;
  const bool isShort = bytes.size() <= kShortTextLimit;
  std::string record = isShort ? Number(bytes.size(), 1) : '\xFF' + Number(bytes.size(), 2);
  record += bytes;
  return AddRecord(record, ofModule);
}

std::string_view Companion::From(uint32_t offset) const noexcept {
  return std::string_view(bytes_).substr(std::min<size_t>(offset, bytes_.size()));
}

std::string_view Companion::FileFor(const std::set<uint32_t>& offsets) const noexcept {
  size_t end = readSize_;
  for (auto start = starts_.begin(); start != starts_.end(); ++start) {
    const auto next = std::next(start);
    if (offsets.contains(*start)) end = next == starts_.end() ? bytes_.size() : *next;
  }
  return std::string_view(bytes_).substr(0, end);
}

}  // namespace qrn::designer
