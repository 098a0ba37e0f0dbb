#include "controls/picture/files/PictureFile.h"
#include "fields/LittleEndian.h"
#include "tests/support/PictureSamples.h"
#include "tests/support/Test.h"

namespace qrn::test {
namespace {

TEST(PictureFiles, NamesTellTheKind) {
  struct Case {
    const char* name;
    PictureFileKind kind;
  };
  using enum PictureFileKind;
  const Case cases[] = {
      {"", Bitmap},        {"abc", Bitmap},  {".wmf", Bitmap},    {"a.wmf", Metafile},
      {"A.WMF", Metafile}, {"a.Ico", Icon},  {"a.bmp", Bitmap},   {"a.gif", None},
      {"abcde", None},     {"a.bmp ", None}, {"a.wmf.ico", Icon}, {"dir\\x.BMP", Bitmap},
      {"bmp.bm", None},    {"a.emf", None},
  };
  for (const Case& row : cases) EXPECT_EQ(PictureFileKindOf(row.name), row.kind) << row.name;
}

// "colours/rows" of a file, "none" for one that is none.
std::string Read(const FileBytes& bytes) {
  const auto file = ReadBitmapFile(bytes);
  if (!file) return "none";
  EXPECT_EQ(file->info.size(), 40 + file->colors * 4);
  EXPECT_EQ(LoadLittle<uint32_t>(std::span(file->info).subspan(32)), file->colors);
  EXPECT_EQ(LoadLittle<uint32_t>(std::span(file->info).subspan(20)), file->rows.size());
  return std::to_string(file->colors) + "/" + std::to_string(file->rows.size());
}

TEST(PictureFiles, BitmapsOfEveryDepth) {
  struct Case {
    uint16_t bits;
    const char* read;
  };
  // 5 pixels a row, 3 rows.
  const Case cases[] = {{1, "2/12"}, {4, "16/12"}, {8, "256/24"}, {24, "0/48"}, {32, "0/60"}};
  for (const Case& row : cases) {
    const FileBytes file = BitmapSample(5, 3, row.bits);
    EXPECT_EQ(Read(file), row.read) << row.bits;
    EXPECT_EQ(Read(With(file, 10, 0, 4)), row.read) << "rows right behind the table";
    EXPECT_EQ(Read(With(file, 34, 4, 4)), row.read) << "a size that is too small";
    EXPECT_EQ(Read(With(file, 22, uint32_t(-3), 4)), row.read) << "from top to bottom";
    EXPECT_EQ(Read(Cut(file, file.size() + 7)), row.read) << "with bytes behind it";
  }
  EXPECT_EQ(Read(With(BitmapSample(5, 3, 8), 46, 7, 4)), "7/24") << "a table of seven";
}

TEST(PictureFiles, BitmapsThatLie) {
  const struct {
    const char* what;
    size_t at;
    uint64_t number;
    int size;
  } cases[] = {
      {"no signature", 0, 'X', 1},
      {"rows past the end", 10, 0x7FFFFFFF, 4},
      {"an older header", 14, 12, 4},
      {"a later header", 14, 108, 4},
      {"no width", 18, 0, 4},
      {"a negative width", 18, 0x80000000, 4},
      {"2 GB in one row", 18, 0x7FFFFFFF, 4},
      {"no height", 22, 0, 4},
      {"the least height", 22, 0x80000000, 4},
      {"the most height", 22, 0x7FFFFFFF, 4},
      {"no depth", 28, 0, 2},
      {"a depth of 2", 28, 2, 2},
      {"a depth of 16", 28, 16, 2},
      {"a depth of 65535", 28, 0xFFFF, 2},
      {"runs without a size", 30, 1, 4},
      {"masks", 30, 3, 4},
      {"another packing", 30, 4, 4},
      {"more rows than there are", 34, 0xFFFFFFFF, 4},
      {"a table too long", 46, 257, 4},
      {"a table past the end", 46, 0xFFFFFFFF, 4},
      {"a table of 2 GB", 46, 0x20000000, 4},
  };
  const FileBytes good = BitmapSample(5, 3, 8);
  ASSERT_EQ(Read(good), "256/24");
  for (const auto& row : cases) {
    EXPECT_EQ(Read(With(good, row.at, row.number, row.size)), "none") << row.what;
  }
  for (size_t size = 0; size < good.size(); ++size) EXPECT_EQ(Read(Cut(good, size)), "none");
}

TEST(PictureFiles, RunsAreAsLongAsTheySay) {
  FileBytes runs = With(With(BitmapSample(5, 3, 8), 30, 1, 4), 34, 6, 4);
  EXPECT_EQ(Read(runs), "256/6");
  EXPECT_EQ(Read(With(runs, 34, 25, 4)), "none");
  EXPECT_EQ(Read(With(With(runs, 18, 100000, 4), 22, 100000, 4)), "none")
      << "what they unpack to would not fit into memory";
}

TEST(PictureFiles, Icons) {
  const FileBytes icon = IconSample();
  EXPECT_TRUE(IsIconFile(icon));
  for (size_t size = 0; size < icon.size(); ++size) EXPECT_FALSE(IsIconFile(Cut(icon, size)));
  EXPECT_FALSE(IsIconFile(With(icon, 4, 2, 2))) << "two images, one there";
  EXPECT_FALSE(IsIconFile(With(icon, 14, 0xFFFFFFFF, 4)));
  EXPECT_FALSE(IsIconFile(With(icon, 18, 0xFFFFFFF0, 4)));
  EXPECT_FALSE(IsIconFile(BitmapSample(5, 3, 8)));
}

TEST(PictureFiles, MetafilesRightAndWrong) {
  using enum MetafileFault;
  struct Case {
    const char* what;
    FileBytes file;
    MetafileFault fault;
  };
  const FileBytes plain = MetafileSample();
  const FileBytes placed = PlaceableSample();
  const Case cases[] = {
      {"plain", plain, None},
      {"placeable", placed, None},
      {"bytes behind it", Cut(placed, placed.size() + 9), None},
      {"nothing", {}, Unreadable},
      {"three bytes", {1, 0, 9}, Unreadable},
      {"plain, cut", Cut(plain, plain.size() - 1), Unreadable},
      {"plain, size 0", With(plain, 6, 0, 4), Unreadable},
      {"plain, the largest size", With(plain, 6, 0xFFFFFFFF, 4), Unreadable},
      {"a record of no size", With(plain, 18, 0, 4), Unreadable},
      {"a record past the end", With(plain, 18, 0x7FFFFFFF, 4), Unreadable},
      {"the key alone", Cut(placed, 4), PlaceableCut},
      {"without a whole block", Cut(placed, 35), PlaceableCut},
      {"without a whole header", Cut(placed, 53), PlaceableCut},
      {"a header and no records", Cut(placed, 54), Unreadable},
      {"placeable, size 0", With(placed, 42, 0, 4), Unreadable},
      {"placeable, the largest size", With(placed, 42, 0xFFFFFFFF, 4), TooLarge},
      {"placeable, 2 GB", With(placed, 42, 0x40000000, 4), TooLarge},
      {"placeable, one below", With(placed, 42, 0x3FFFFFFF, 4), Unreadable},
  };
  for (const Case& row : cases) {
    const MetafileFile file = ReadMetafileFile(row.file);
    EXPECT_EQ(file.fault, row.fault) << row.what;
    EXPECT_EQ(file.bits.size(), row.fault == None ? plain.size() : 0) << row.what;
  }
}

// The published form has 22 bytes in front, and these are not skipped by it.
TEST(PictureFiles, APlaceableMetafileBeginsAtByte36) {
  FileBytes published = PlaceableSample();
  published.erase(published.begin() + 22, published.begin() + 36);
  EXPECT_EQ(ReadMetafileFile(published).fault, MetafileFault::Unreadable);
}

// 16 bits hold the size of what is read: a longer metafile is cut, and then is none.
TEST(PictureFiles, APlaceableMetafileIsCutAt65534Bytes) {
  const auto padded = [](size_t words) {  // one record more, of so many words
    FileBytes file = PlaceableSample();
    FileBytes record;
    Add(record, words, 4);
    Add(record, 0x0626, 2);
    record.resize(words * 2);
    file.insert(file.begin() + 54, record.begin(), record.end());
    return With(file, 42, (file.size() - 36) / 2, 4);
  };
  const size_t room = 0x7FFF - MetafileSample().size() / 2;
  EXPECT_EQ(ReadMetafileFile(padded(room)).bits.size(), 65534u);
  EXPECT_EQ(ReadMetafileFile(padded(room + 1)).fault, MetafileFault::Unreadable);
}

}  // namespace
}  // namespace qrn::test
