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
  added_.emplace(offset, record.size());
  return {name_, offset, isText};
}

form::FileReference Companion::AddPicture(std::string_view image, bool ofModule) {
  std::string record(ofModule ? kPictureClass : std::string_view());
  record += kPictureMark;
  record += Number(image.size(), 4);
  record += image;
  return AddRecord(Number(record.size(), 4) + record, false);
}

std::optional<form::FileReference> Companion::AddText(std::string_view bytes, bool hasSign) {
  if (bytes.size() > kTextLimit) return std::nullopt;
  const bool isShort = bytes.size() <= kShortTextLimit;
  std::string record = isShort ? Number(bytes.size(), 1) : '\xFF' + Number(bytes.size(), 2);
  record += bytes;
  return AddRecord(record, hasSign);
}

std::string_view Companion::From(uint32_t offset) const noexcept {
  const auto added = added_.find(offset);
  if (added != added_.end()) return std::string_view(bytes_).substr(offset, added->second);
  return std::string_view(bytes_).substr(0, readSize_).substr(std::min<size_t>(offset, readSize_));
}

CompanionImage Companion::Image(const std::set<uint32_t>& offsets) const {
  CompanionImage image;
  image.order = saved_;
  for (const auto& [offset, size] : added_) {
    const bool stands = std::find(saved_.begin(), saved_.end(), offset) != saved_.end();
    if (!stands && offsets.contains(offset)) image.order.push_back(offset);
  }
  if (image.order.size() == saved_.size()) {
    while (!image.order.empty() && !offsets.contains(image.order.back())) image.order.pop_back();
    image.shrinks = image.order.size() < saved_.size();
  }
  image.bytes = bytes_.substr(0, readSize_);
  for (const uint32_t offset : image.order) {
    image.places[offset] = static_cast<uint32_t>(image.bytes.size());
    image.bytes += From(offset);
  }
  return image;
}

}  // namespace qrn::designer
