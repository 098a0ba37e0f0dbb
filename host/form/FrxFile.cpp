#include "host/form/FrxFile.h"

#include <algorithm>

#include "platform/CodePage.h"

namespace qrn::form {
namespace {

constexpr std::string_view kPictureMark("lt\0\0", 4);
constexpr size_t kClassIdSize = 16;
constexpr uint8_t kLongLengthFollows = 0xFF;

// Takes a little-endian number of `size` bytes off the front.
std::optional<uint32_t> TakeNumber(std::string_view* bytes, size_t size) noexcept {
  if (bytes->size() < size) return std::nullopt;
  uint32_t number = 0;
  for (size_t i = 0; i < size; ++i) {
    number |= static_cast<uint32_t>(static_cast<uint8_t>((*bytes)[i])) << (8 * i);
  }
  bytes->remove_prefix(size);
  return number;
}

std::optional<std::string_view> Behind(std::string_view bytes, uint32_t offset) noexcept {
  if (offset >= bytes.size()) return std::nullopt;
  return bytes.substr(offset);
}

std::optional<std::string_view> Cut(std::string_view bytes, std::optional<uint32_t> size) noexcept {
  if (!size || *size > bytes.size()) return std::nullopt;
  return bytes.substr(0, *size);
}

}  // namespace

std::optional<std::string_view> PictureAt(std::string_view frxBytes, uint32_t offset) noexcept {
  std::optional<std::string_view> rest = Behind(frxBytes, offset);
  if (!rest) return std::nullopt;
  const std::optional<uint32_t> whole = TakeNumber(&*rest, 4);
  std::optional<std::string_view> record = Cut(*rest, whole);
  if (!record) return std::nullopt;
  if (!record->starts_with(kPictureMark))
    *record = record->substr(std::min(kClassIdSize, record->size()));
  if (!record->starts_with(kPictureMark)) return std::nullopt;
  record->remove_prefix(kPictureMark.size());
  const std::optional<uint32_t> size = TakeNumber(&*record, 4);
  return Cut(*record, size);
}

std::optional<std::string> TextAt(std::string_view frxBytes, uint32_t offset) {
  std::optional<std::string_view> rest = Behind(frxBytes, offset);
  if (!rest) return std::nullopt;
  std::optional<uint32_t> length = TakeNumber(&*rest, 1);
  if (length == kLongLengthFollows) length = TakeNumber(&*rest, 2);
  const std::optional<std::string_view> text = Cut(*rest, length);
  if (!text) return std::nullopt;
  return CodePageToUtf8(*text);
}

}  // namespace qrn::form
