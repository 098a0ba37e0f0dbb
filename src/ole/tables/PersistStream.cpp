#include "ole/tables/PersistStream.h"

#include <algorithm>
#include <array>

namespace qrn::ole {
namespace {

constexpr size_t kTextStep = 4096;  // code units read at a time: a claimed length buys no memory

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

bool ReadCodeUnits(ByteSource& source, size_t count, std::u16string& text) {
  while (count > 0) {
    const size_t step = std::min(count, kTextStep);
    const size_t had = text.size();
    text.resize(had + step);
    if (!ReadWhole(source, text.data() + had, step * sizeof(char16_t))) return false;
    count -= step;
  }
  return true;
}

bool ReadText(ByteSource& source, PersistedItem& item) {
  const auto bytes = ReadNumber(source, 4);
  if (!bytes || *bytes % 2 != 0) return false;
  item.nullText = *bytes == 0;
  if (item.nullText) return true;
  if (!ReadCodeUnits(source, *bytes / 2, item.text) || item.text.back() != 0) return false;
  item.text.pop_back();
  return true;
}

bool WriteText(ByteSink& sink, const PersistedItem& item) {
  if (item.nullText) return WriteNumber(sink, 0, 4);
  const size_t bytes = (item.text.size() + 1) * sizeof(char16_t);
  return bytes <= UINT32_MAX && WriteNumber(sink, static_cast<uint32_t>(bytes), 4) &&
         sink.Write(item.text.c_str(), bytes);
}

bool ReadObject(ByteSource& source, PersistedItem& item, ObjectCodec& objects) {
  Guid classId;
  if (!ReadWhole(source, &classId, sizeof classId)) return false;
  if (classId == Guid{}) return true;
  const auto object = objects.Read(classId, source);
  if (object) item.object = *object;
  return object.has_value();
}

bool WriteObject(ByteSink& sink, const PersistedItem& item, ObjectCodec& objects) {
  constexpr Guid kNull{};
  if (item.object == PersistedItem::kNoObject) return sink.Write(&kNull, sizeof kNull);
  return objects.Write(item.object, sink);
}

// Bytes of a number of that type, 0 for a type that is none.
constexpr size_t NumberSize(VarType type) {
  if (type == vt::kBool || type == vt::kI2) return 2;
  return type == vt::kI4 || type == vt::kUI4 ? 4 : 0;
}

bool ReadValue(ByteSource& source, PersistedItem& item, ObjectCodec& objects) {
  if (const size_t size = NumberSize(item.type)) {
    const auto number = ReadNumber(source, size);
    item.number = number.value_or(0);
    return number.has_value();
  }
  if (item.type == vt::kBstr) return ReadText(source, item);
  return item.type == vt::kDispatch && ReadObject(source, item, objects);
}

bool WriteValue(ByteSink& sink, const PersistedItem& item, ObjectCodec& objects) {
  if (const size_t size = NumberSize(item.type)) return WriteNumber(sink, item.number, size);
  if (item.type == vt::kBstr) return WriteText(sink, item);
  return item.type == vt::kDispatch && WriteObject(sink, item, objects);
}

bool ReadItem(ByteSource& source, const PersistRow& row, PersistedItem& item,
              ObjectCodec& objects) {
  const auto type = row.Raw() ? std::optional<uint32_t>(vt::kUI4) : ReadNumber(source, 2);
  if (!type) return false;
  item.type = static_cast<VarType>(*type);
  return ReadValue(source, item, objects);
}

bool WriteItem(ByteSink& sink, const PersistRow& row, const PersistedItem& item,
               ObjectCodec& objects) {
  return (row.Raw() || WriteNumber(sink, item.type, 2)) && WriteValue(sink, item, objects);
}

}  // namespace

std::optional<std::vector<PersistedItem>> ReadItems(ByteSource& source,
                                                    std::span<const PersistRow> map,
                                                    ObjectCodec& objects) {
  const auto version = ReadNumber(source, 4);
  if (!version || *version > kStreamVersion) return std::nullopt;
  std::vector<PersistedItem> items(map.size());
  for (size_t i = 0; i < map.size(); ++i) {
    if (!ReadItem(source, map[i], items[i], objects)) return std::nullopt;
  }
  return items;
}

bool WriteItems(ByteSink& sink, std::span<const PersistRow> map,
                std::span<const PersistedItem> items, ObjectCodec& objects) {
  if (items.size() != map.size() || !WriteNumber(sink, kStreamVersion, 4)) return false;
  for (size_t i = 0; i < map.size(); ++i) {
    if (!WriteItem(sink, map[i], items[i], objects)) return false;
  }
  return true;
}

}  // namespace qrn::ole
