// The picture control through its window: files of every kind, right and wrong, what it draws and
// what it holds.
#include <olectl.h>
// After windows.h, which it needs.
#include <psapi.h>

#include "OfficeFixture.h"
#include "controls/picture/QRNPic.h"
#include "tests/support/DrawingObjects.h"
#include "tests/support/PictureSamples.h"
#include "tests/support/Setting.h"

namespace qrn::test {
namespace {

constexpr COLORREF kBlue = RGB(0, 0, 255);
constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kBlack = RGB(0, 0, 0);

struct Pictures : OfficeFixture {
  void SetUp() override {
    Save("good.bmp", BitmapSample(8, 8, 24, 0xFF));
    Save("red.bmp", BitmapSample(40, 30, 4));
    Save("cut.bmp", Cut(BitmapSample(8, 8, 24), 60));
    Save("abc", BitmapSample(8, 8, 8));
    Save("good.ico", IconSample());
    Save("cut.ico", Cut(IconSample(), 30));
    Save("good.wmf", MetafileSample());
    Save("placed.wmf", PlaceableSample());
    Save("cut.wmf", Cut(MetafileSample(), 40));
    Save("short.wmf", {1, 0, 9});
    Save("block.wmf", Cut(PlaceableSample(), 40));
    Save("huge.wmf", With(PlaceableSample(), 42, 0xFFFFFFFF, 4));
    Save("none.wmf", With(PlaceableSample(), 42, 0, 4));
    Save("a.gif", {'G', 'I', 'F', '8', '9', 'a'});
    Bind(picture_, L"Name");
    picture_.Set(L"BlobPath", Text(office_.Directory()));
    ASSERT_EQ(picture_.Show(), S_OK);
  }

  void Save(const char* name, const FileBytes& bytes) {
    FILE* file = fopen(office_.PathOf(name).c_str(), "wb");
    ASSERT_NE(file, nullptr);
    fwrite(bytes.data(), 1, bytes.size(), file);
    fclose(file);
  }

  void Write(const char* text, const char* field = "Name") { OfficeFixture::Write(text, field); }
  // The kind of the picture: 1 bitmap, 2 metafile, 3 icon; -1 for none.
  int Kind() {
    const auto picture = com::Query<IPicture>(picture_->Picture);
    SHORT kind = -1;
    if (picture) picture->get_Type(&kind);
    return kind;
  }
  // Colours of a drawing of 60 by 40 pixels.
  std::vector<COLORREF> Draw(std::initializer_list<POINT> points) {
    const WindowDc screen(nullptr);
    const MemoryDc dc(CreateCompatibleDC(screen.get()));
    const Bitmap surface(CreateCompatibleBitmap(screen.get(), 80, 80));
    const Selected into(dc.get(), surface.get());
    picture_->OnDraw(dc.get(), {0, 0, 60, 40});
    std::vector<COLORREF> colors;
    for (const POINT& point : points) colors.push_back(GetPixel(dc.get(), point.x, point.y));
    return colors;
  }
  COLORREF DrawAt(int x, int y) { return Draw({{x, y}}).front(); }

  Hosted<CQRNPic> picture_{L"pic1"};
};

TEST_F(Pictures, StartAsTheirTableSays) {
  Hosted<CQRNPic> fresh(L"pic2");
  constexpr char kStart[] =
      "DbField=BSTR: BlobPath=BSTR: Stretch=BOOL:0 PictureType=I2:0 BorderStyle=I4:1 "
      "Appearance=I2:1 MousePointer=I4:0 BackColor=UI4:2147483663 ForeColor=UI4:2147483666";
  EXPECT_EQ(fresh.Values(kStart), kStart);
  EXPECT_FALSE(fresh->Picture);
  EXPECT_FALSE(fresh->GetFont());
}

// From a control that shows a bitmap.
TEST_F(Pictures, FilesRightAndWrong) {
  struct Case {
    const char* text;
    int kind;
    const char* message;
  };
  constexpr int kKept = PICTYPE_BITMAP;
  constexpr int kNone = -1;
  const Case cases[] = {
      {"red.bmp", PICTYPE_BITMAP, ""},
      {"RED.BMP", PICTYPE_BITMAP, ""},
      {"abc", PICTYPE_BITMAP, ""},
      {"GOOD.ICO", PICTYPE_ICON, ""},
      {"gOOD.wMF", PICTYPE_METAFILE, ""},
      {"good.ico", PICTYPE_ICON, ""},
      {"good.wmf", PICTYPE_METAFILE, ""},
      {"Placed.Wmf", PICTYPE_METAFILE, ""},
      {"a.gif", kNone, ""},
      {"cut.bmp", kNone, "VE015"},
      {"missing.bmp", kKept, "VE819"},
      {"missing.ico", kKept, "VE819"},
      {"missing.wmf", kKept, "VE819"},
      {"", kNone, "VE015"},
      {"cut.ico", kKept, "VE020"},
      {"short.wmf", kKept, "VE019"},
      {"cut.wmf", kKept, "VE019"},
      {"block.wmf", kKept, "VE023"},
      {"huge.wmf", kKept, "VE001"},
      {"none.wmf", kKept, "VE019"},
  };
  const auto expectAll = [&](const Case& row) {
    SCOPED_TRACE(row.text);
    Write("good.bmp");
    const auto before = picture_->Picture;
    ASSERT_EQ(Kind(), PICTYPE_BITMAP);
    Messages messages;
    Write(row.text);
    EXPECT_EQ(messages.Take().substr(0, 5), row.message);
    EXPECT_EQ(Kind(), row.kind);
    const bool kept = row.kind == kKept && *row.message != '\0';
    EXPECT_EQ(picture_->Picture == before, kept);
  };
  std::ranges::for_each(cases, expectAll);
  const std::wstring folder(picture_->BlobPath.view());
  picture_.Set(L"BlobPath", Text((folder + L"\\").c_str()));
  std::ranges::for_each(cases, expectAll);
}

TEST_F(Pictures, PathsAreMadeOfBothParts) {
  Messages messages;
  const std::string directory = office_.Directory();
  const std::wstring wide(directory.begin(), directory.end());
  Write("missing.bmp");
  EXPECT_NE(messages.Take().find("(" + directory + "\\missing.bmp)"), std::string::npos);
  picture_.Set(L"BlobPath", Text((wide + L"\\").c_str()));
  Write("missing.bmp");
  EXPECT_NE(messages.Take().find("(" + directory + "\\\\missing.bmp)"), std::string::npos);
  picture_.Set(L"BlobPath", Text(L""));
  Write("good.ico");
  EXPECT_NE(messages.Take().find("(good.ico)"), std::string::npos) << "not where the program is";
  Write((directory + "\\good.ico").c_str());
  EXPECT_EQ(Kind(), PICTYPE_ICON);
  Write("");
  EXPECT_EQ(messages.Take().substr(0, 5), "VE819");
  picture_.Set(L"BlobPath", Text(std::wstring(300, L'x').c_str()));
  Write("good.bmp");
  EXPECT_NE(messages.Take().find("(" + std::string(259, 'x') + ")"), std::string::npos);
}

TEST_F(Pictures, NamesStandInCharacterFieldsAlone) {
  Hosted<CQRNPic> number(L"pic2");
  Bind(number, L"Code");
  ASSERT_EQ(number.Show(), S_OK);
  Messages messages;
  Write("missing.bmp", "Code");
  EXPECT_EQ(messages.Take(), "");
  EXPECT_FALSE(number->Picture);
}

TEST_F(Pictures, DrawFrameEdgeAndPicture) {
  picture_.Set(L"BackColor", Long(kBlue));
  EXPECT_EQ(DrawAt(30, 20), kBlue);
  EXPECT_EQ(DrawAt(70, 20), kBlack) << "nothing outside";
  picture_.Set(L"Appearance", Short(0));
  EXPECT_EQ(Draw({{0, 20}, {59, 20}, {1, 20}}), (std::vector<COLORREF>{kBlack, kBlack, kBlue}));
  picture_.Set(L"BorderStyle", Long(0));
  EXPECT_EQ(DrawAt(0, 20), kBlue);
  Write("red.bmp");  // 40 by 30
  EXPECT_EQ(Draw({{1, 1}, {39, 29}, {42, 20}, {20, 32}, {58, 38}}),
            (std::vector<COLORREF>{kRed, kRed, kBlue, kBlue, kBlue}));
  picture_.Set(L"Appearance", Short(1));
  EXPECT_EQ(Draw({{2, 2}, {41, 31}, {43, 33}}), (std::vector<COLORREF>{kRed, kRed, kBlue}));
  picture_.Set(L"Stretch", Bool(true));
  EXPECT_EQ(Draw({{3, 3}, {56, 36}}), (std::vector<COLORREF>{kRed, kRed}));
  Write("placed.wmf");
  EXPECT_EQ(Draw({{4, 4}, {30, 20}, {54, 34}}), (std::vector<COLORREF>{kRed, kRed, kRed}));
  Write("a.gif");
  EXPECT_EQ(DrawAt(30, 20), kBlue);
}

TEST_F(Pictures, APictureLargerThanTheControlIsCutAtItsEdge) {
  Save("large.bmp", BitmapSample(100, 100, 4));
  picture_.Set(L"Appearance", Short(0));
  picture_.Set(L"BorderStyle", Long(0));
  Write("large.bmp");
  EXPECT_EQ(Draw({{59, 39}, {60, 20}, {30, 40}}), (std::vector<COLORREF>{kRed, kBlack, kBlack}));
}

TEST_F(Pictures, AnotherPictureIsDrawnAtOnce) {
  const HWND window = picture_->hwnd();
  for (const char* file : {"good.bmp", "red.bmp", "good.ico", "a.gif"}) {
    ValidateRect(window, nullptr);
    Write(file);
    EXPECT_TRUE(GetUpdateRect(window, nullptr, FALSE)) << file;
  }
  ValidateRect(window, nullptr);
  picture_.Set(L"BackColor", Long(kRed));
  EXPECT_TRUE(GetUpdateRect(window, nullptr, FALSE));
}

TEST_F(Pictures, MouseAndKeysAreEvents) {
  const struct {
    UINT message;
    const char* events;
  } cases[] = {
      {WM_LBUTTONDOWN, "-605(I2:1,I2:0,R4:3,R4:4) "},
      {WM_LBUTTONUP, "-607(I2:1,I2:0,R4:3,R4:4) -600() "},
      {WM_RBUTTONUP, "-607(I2:2,I2:0,R4:3,R4:4) -600() "},
      {WM_LBUTTONDBLCLK, "-601() "},
  };
  for (const auto& row : cases) {
    picture_.events.log.clear();
    SendMessageW(picture_->hwnd(), row.message, row.message == WM_LBUTTONDOWN ? MK_LBUTTON : 0,
                 MAKELPARAM(3, 4));
    EXPECT_EQ(picture_.events.log, row.events) << row.message;
  }
  picture_.events.log.clear();
  picture_.Offer(WM_KEYDOWN, VK_RETURN);
  EXPECT_EQ(picture_.events.log, "-602(I2&:13,I2:0) -600() ");
  EXPECT_EQ(picture_.Offer(WM_KEYDOWN, VK_TAB), S_FALSE);
}

// Memory in use; the system under test counts no other kind.
size_t OwnBytes() {
  PROCESS_MEMORY_COUNTERS counters{};
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
  return counters.WorkingSetSize;
}

// QRN_PICTURE_LOADS asks for another number than the everyday one.
int LoadCount() { return static_cast<int>(test::Setting("QRN_PICTURE_LOADS", 2000)); }

// A file that stayed open with each would end them too: the library opens 512 at most.
TEST_F(Pictures, ThousandsOfLoadsHoldNoMoreThanOne) {
  const char* const kFiles[] = {"good.bmp",   "red.bmp", "abc",     "good.ico",  "good.wmf",
                                "placed.wmf", "a.gif",   "cut.bmp", "short.wmf", "cut.ico"};
  Messages messages;
  const auto round = [&] {
    for (const char* file : kFiles) {
      Write(file);
      DrawAt(30, 20);
    }
    messages.Take();
  };
  constexpr int kWarm = 50;  // rounds until the heaps have grown to what they keep
  for (int i = 0; i < kWarm; ++i) round();
  const long long before = DrawingObjects();
  const size_t bytes = OwnBytes();
  ASSERT_GT(bytes, 0U);
  const int rounds = LoadCount() / static_cast<int>(std::size(kFiles));
  for (int i = 0; i < rounds; ++i) round();
  EXPECT_EQ(DrawingObjects(), before);
  // A load that kept its file, its rows or its picture would keep more than this of each round.
  EXPECT_LT(OwnBytes(), bytes + static_cast<size_t>(rounds) * 500);
  Write("good.ico");
  EXPECT_EQ(Kind(), PICTYPE_ICON);
  EXPECT_EQ(messages.Take(), "");
}

}  // namespace
}  // namespace qrn::test
