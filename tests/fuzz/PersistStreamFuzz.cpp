// Streams of any bytes as the persisted state of every control, and pictures of any bytes. What
// reads must write back as it was read.
#include <cstring>

#include "binding/tables/AllTables.h"
#include "ole/tables/PersistStream.h"
#include "ole/tables/PictureBytes.h"
#include "tests/fuzz/FuzzInput.h"

using namespace qrn::ole;
using namespace qrn::fuzz;

namespace {

class Source final : public ByteSource {
 public:
  explicit Source(std::span<const uint8_t> bytes) : bytes_(bytes) {}
  size_t Read(void* into, size_t count) override {
    const size_t got = std::min(count, bytes_.size() - at);
    if (got) std::memcpy(into, bytes_.data() + at, got);
    at += got;
    return got;
  }
  size_t at = 0;

 private:
  std::span<const uint8_t> bytes_;
};

class Sink final : public ByteSink {
 public:
  bool Write(const void* from, size_t count) override {
    const auto* first = static_cast<const uint8_t*>(from);
    bytes.insert(bytes.end(), first, first + count);
    return true;
  }
  std::vector<uint8_t> bytes;
};

// A stream that begins as the control's map does, with bytes of the input for its values: plain
// random bytes seldom get past the first type.
std::vector<uint8_t> Shaped(const ControlTable& table, std::span<const uint8_t> input) {
  std::vector<uint8_t> bytes{0x00, 0x0E, 0, 0};
  size_t next = 0;
  const auto take = [&](size_t count) {
    for (; count > 0 && next < input.size(); --count) bytes.push_back(input[next++]);
  };
  for (const PersistRow& row : table.persisted) {
    VarType type = vt::kEmpty;
    for (const PropertyRow& property : table.properties) {
      if (property.id == row.id) type = property.type.vt;
    }
    if (!row.Raw()) bytes.insert(bytes.end(), {static_cast<uint8_t>(type), 0});
    const size_t text = next < input.size() ? input[next] % 32 : 0;
    if (type == vt::kBstr) {
      bytes.insert(bytes.end(), {static_cast<uint8_t>(text), 0, 0, 0});
      take(text);
    } else {
      take(type == vt::kBool || type == vt::kI2 ? 2 : 4);
    }
  }
  return bytes;
}

void Check(const ControlTable& table, std::span<const uint8_t> bytes) {
  Source source(bytes);
  const auto items = ReadItems(source, table.persisted);
  if (!items) return;
  Require(items->size() == table.persisted.size(), "not one item for each row");
  Sink sink;
  Require(WriteItems(sink, table.persisted, *items), "what was read cannot be written");
  Require(sink.bytes.size() == source.at, "written with another length");
  Require(std::equal(sink.bytes.begin() + 4, sink.bytes.end(), bytes.begin() + 4),
          "written with other bytes");
}

// Bytes that begin as a picture of some kind.
void CheckPicture(std::span<const uint8_t> input) {
  static const std::vector<uint8_t> kHeads[] = {
      {'B', 'M', 0, 0, 0, 0, 0, 0, 0, 0, 54, 0, 0, 0, 40, 0, 0, 0},
      {'B', 'M', 0, 0, 0, 0, 0, 0, 0, 0, 26, 0, 0, 0, 12, 0, 0, 0},
      {0, 0, 1, 0, 1, 0},
      {0xD7, 0xCD, 0xC6, 0x9A},
      {1, 0, 9, 0},
      {1, 0, 0, 0, 88, 0, 0, 0},
  };
  for (std::vector<uint8_t> bytes : kHeads) {
    bytes.insert(bytes.end(), input.begin(), input.end());
    IsSoundPicture(bytes);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const ControlTable& table = *qrn::kControls[data[0] % std::size(qrn::kControls)];
  const std::span input(data + 1, size - 1);
  Check(table, input);
  Check(table, Shaped(table, input));
  CheckPicture(input);
  return 0;
}
