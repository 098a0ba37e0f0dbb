// Files of any bytes as pictures: plain, and behind the heads of each kind. What is taken out of
// them lies inside them.
#include <iterator>

#include "controls/picture/files/PictureFile.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/support/PictureSamples.h"

using namespace qrn;
using namespace qrn::fuzz;

namespace {

using Bytes = std::span<const uint8_t>;

bool LiesIn(Bytes part, Bytes whole) {
  return part.data() >= whole.data() && part.data() + part.size() <= whole.data() + whole.size();
}

void Check(Bytes file) {
  if (const auto bitmap = ReadBitmapFile(file)) {
    Require(LiesIn(bitmap->rows, file), "rows outside the file");
    Require(bitmap->colors <= 256, "more colours than a palette has");
    Require(bitmap->info.size() == 40 + bitmap->colors * 4, "a table of another length");
  }
  IsIconFile(file);
  const MetafileFile metafile = ReadMetafileFile(file);
  const bool fine = metafile.fault == MetafileFault::None;
  Require(fine != metafile.bits.empty(), "neither bits nor a fault");
  Require(metafile.bits.empty() || LiesIn(metafile.bits, file), "bits outside the file");
}

// What sizes, counts and offsets may say: small numbers, and the ends of their ranges.
constexpr uint64_t kNumbers[] = {0,          1,          2,          7,          0x28,      0x7F,
                                 0xFF,       0x100,      0x7FFF,     0x8000,     0xFFFF,    0x10000,
                                 0x3FFFFFFF, 0x40000000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};

// A right file with lies in it: three bytes of the input each say where, how wide and which; a byte
// that is left over says where the file is cut. A copy ends where its bytes do.
void CheckLying(test::FileBytes file, Bytes input) {
  for (; input.size() >= 3; input = input.subspan(3)) {
    uint64_t number = kNumbers[input[2] % std::size(kNumbers)];
    for (size_t i = 0; i < size_t{1} << input[1] % 3; ++i, number >>= 8) {
      const size_t at = input[0] + i;
      if (at < file.size()) file[at] = static_cast<uint8_t>(number);
    }
  }
  if (!input.empty()) file.resize(std::min<size_t>(input[0], file.size()));
  Check(test::FileBytes(file));
}

// A right file with its bytes from `at` on overwritten, as far as they go.
void CheckSpoiled(test::FileBytes file, Bytes with, size_t at) {
  for (size_t i = 0; i < with.size() && at + i < file.size(); ++i) file[at + i] = with[i];
  Check(file);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const Bytes input(data + 1, size - 1);
  Check(input);
  for (const auto& file : {test::BitmapSample(5, 3, 8), test::BitmapSample(9, 2, 24),
                           test::IconSample(), test::MetafileSample(), test::PlaceableSample()}) {
    CheckSpoiled(file, input, data[0] % file.size());
    CheckLying(file, input.first(std::min<size_t>(input.size(), data[0] % 16)));
  }
  return 0;
}
