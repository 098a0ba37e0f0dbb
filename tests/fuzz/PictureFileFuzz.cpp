// Files of any bytes as pictures: plain, and behind the heads of each kind. What is taken out of
// them lies inside them.
#include <cstdio>
#include <cstdlib>

#include "controls/picture/files/PictureFile.h"
#include "tests/controls/picture/SampleFiles.h"

using namespace qrn;

namespace {

using Bytes = std::span<const uint8_t>;

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "%s\n", what);
  std::abort();
}

bool LiesIn(Bytes part, Bytes whole) {
  return part.data() >= whole.data() && part.data() + part.size() <= whole.data() + whole.size();
}

void Check(Bytes file) {
  if (const auto bitmap = ReadBitmapFile(file)) {
    Require(LiesIn(bitmap->rows, file), "rows outside the file");
    Require(bitmap->info.size() == 40 + bitmap->colors * 4, "a table of another length");
  }
  IsIconFile(file);
  const MetafileFile metafile = ReadMetafileFile(file);
  const bool fine = metafile.fault == MetafileFault::None;
  Require(fine != metafile.bits.empty(), "neither bits nor a fault");
  Require(metafile.bits.empty() || LiesIn(metafile.bits, file), "bits outside the file");
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
  }
  return 0;
}
