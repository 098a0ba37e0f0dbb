#include "ole/tables/PersistStream.h"

#include <algorithm>
#include <array>

#include "ole/tables/PictureBytes.h"

namespace qrn::ole {
namespace {

constexpr size_t kStep = 8192;  // elements read at a time: a claimed length buys no memory

bool ReadWhole(ByteSource& source, void* into, size_t bytes) {
  return source.Read(into, bytes) == bytes;
}

std::optional<uint32_t> ReadNumber(ByteSource& source, size_t bytes) {
  std::array<uint8_t, 4> raw{};
  if (!ReadWhole(source, raw.data(), bytes)) return std::nullopt;
  uint32_t number = 0;
  for (size_t i = bytes; i-- > 0;) number = number << 8 | raw[i];
  return number;
}

bool WriteNumber(ByteSink& sink, uint32_t number, size_t bytes) {
  std::array<uint8_t, 4> raw{};
  for (size_t i = 0; i < bytes; ++i) raw[i] = static_cast<uint8_t>(number >> (8 * i));
  return sink.Write(raw.data(), bytes);
}

// Appends `count` elements to a text or a list of bytes.
template <class Container>
bool Append(ByteSource& source, size_t count, Container& to) {
  while (count > 0) {
    const size_t step = std::min(count, kStep);
    const size_t had = to.size();
    to.resize(had + step);
    if (!ReadWhole(source, to.data() + had, step * sizeof to[0])) return false;
    count -= step;
  }
  return true;
}

bool ReadText(ByteSource& source, PersistedItem& item) {
  const auto bytes = ReadNumber(source, 4);
  if (!bytes || *bytes % 2 != 0) return false;
  item.nullText = *bytes == 0;
  if (item.nullText) return true;
  if (!Append(source, *bytes / 2, item.text) || item.text.back() != 0) return false;
  item.text.pop_back();
  return true;
}

bool WriteText(ByteSink& sink, const PersistedItem& item) {
  if (item.nullText) return WriteNumber(sink, 0, 4);
  const size_t bytes = (item.text.size() + 1) * sizeof(char16_t);
  return bytes <= UINT32_MAX && WriteNumber(sink, static_cast<uint32_t>(bytes), 4) &&
         sink.Write(item.text.c_str(), bytes);
}

// A font: version, charset (2), attributes, weight (2), size (4), length of the name, the name.
bool ReadFont(ByteSource& source, std::vector<uint8_t>& bytes) {
  constexpr size_t kHead = 11;
  return Append(source, kHead, bytes) && Append(source, bytes[kHead - 1], bytes);
}

// A picture: the signature "lt", the count of the bytes that follow (4), the bytes.
bool ReadPicture(ByteSource& source, std::vector<uint8_t>& bytes) {
  constexpr std::array<uint8_t, 4> kSignature{'l', 't', 0, 0};
  if (!Append(source, 8, bytes)) return false;
  if (!std::equal(kSignature.begin(), kSignature.end(), bytes.begin())) return false;
  const size_t count = bytes[4] | bytes[5] << 8 | bytes[6] << 16 | uint32_t{bytes[7]} << 24;
  return Append(source, count, bytes) && IsSoundPicture(std::span(bytes).subspan(8));
}

bool ReadObject(ByteSource& source, PersistedItem& item) {
  if (!ReadWhole(source, &item.classId, sizeof item.classId)) return false;
  if (item.classId == kFontClass) return ReadFont(source, item.object);
  if (item.classId == kPictureClass) return ReadPicture(source, item.object);
  return item.classId == Guid{};
}

bool WriteObject(ByteSink& sink, const PersistedItem& item) {
  return sink.Write(&item.classId, sizeof item.classId) &&
         sink.Write(item.object.data(), item.object.size());
}

// Bytes of a number of that type, 0 for a type that is none.
constexpr size_t NumberSize(VarType type) {
  if (type == vt::kBool || type == vt::kI2) return 2;
  return type == vt::kI4 || type == vt::kUI4 ? 4 : 0;
}

bool ReadValue(ByteSource& source, PersistedItem& item) {
  if (const size_t size = NumberSize(item.type)) {
    const auto number = ReadNumber(source, size);
    item.number = number.value_or(0);
    return number.has_value();
  }
  if (item.type == vt::kBstr) return ReadText(source, item);
  return item.type == vt::kDispatch && ReadObject(source, item);
}

bool WriteValue(ByteSink& sink, const PersistedItem& item) {
  if (const size_t size = NumberSize(item.type)) return WriteNumber(sink, item.number, size);
  if (item.type == vt::kBstr) return WriteText(sink, item);
  return item.type == vt::kDispatch && WriteObject(sink, item);
}

bool ReadItem(ByteSource& source, const PersistRow& row, PersistedItem& item) {
  const auto type = row.Raw() ? std::optional<uint32_t>(vt::kUI4) : ReadNumber(source, 2);
  if (!type) return false;
  item.type = static_cast<VarType>(*type);
  return ReadValue(source, item);
}

bool WriteItem(ByteSink& sink, const PersistRow& row, const PersistedItem& item) {
  return (row.Raw() || WriteNumber(sink, item.type, 2)) && WriteValue(sink, item);
}

}  // namespace

std::optional<std::vector<PersistedItem>> ReadItems(ByteSource& source,
                                                    std::span<const PersistRow> map) {
  const auto version = ReadNumber(source, 4);
  if (!version || *version > kStreamVersion) return std::nullopt;
  std::vector<PersistedItem> items(map.size());
  for (size_t i = 0; i < map.size(); ++i) {
    if (!ReadItem(source, map[i], items[i])) return std::nullopt;
  }
  return items;
}

bool WriteItems(ByteSink& sink, std::span<const PersistRow> map,
                std::span<const PersistedItem> items) {
  if (items.size() != map.size() || !WriteNumber(sink, kStreamVersion, 4)) return false;
  for (size_t i = 0; i < map.size(); ++i) {
    if (!WriteItem(sink, map[i], items[i])) return false;
  }
  return true;
}

}  // namespace qrn::ole
