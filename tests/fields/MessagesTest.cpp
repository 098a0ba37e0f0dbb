#include "FieldCases.h"
#include "fields/HeapCheck.h"
#include "fields/Messages.h"
#include "platform/Memory.h"
#include "platform/MessageBox.h"

namespace qrn {
namespace {

TEST(Messages, ArgumentsAreFilledIn) {
  const Watch watch;
  EXPECT_EQ(ShowMessage(kVE001, "qrnutil", 42), 7) << "the box's answer comes back";
  ShowMessage(kVE806, "a.btr", 100, -2);
  ShowMessage(kVE804);
  EXPECT_EQ(watch.Boxes(),
            "[2000 VE001 メモリ不足  qrnutil 42]"
            "[2000 VE806 BtrieveﾌｧｲﾙとDDFファイルの定義が合致していません。"
            "(file=a.btr,Btrieve=100,DDF=-2)]"
            "[2000 VE804 インデックスの指定が不正です。]");
}

TEST(Messages, AnIdOfNoRowShowsAnEmptyBox) {
  const Watch watch;
  ShowMessage(1);
  ShowMessage(-1);
  EXPECT_EQ(watch.Boxes(), "[2000 ][2000 ]");
}

TEST(Messages, LongArgumentsAreCutAtACharacter) {
  const Watch watch;
  const std::string name = Utf8ToCodePage("x表表") + std::string(5000, '\x95');
  ShowMessage(kVE819, name.c_str());
  std::string pairs;
  for (int i = 0; i < 600; ++i) pairs += "表";
  ShowMessage(kVE818, Utf8ToCodePage(pairs).c_str());
  const std::string boxes = Utf8ToCodePage(watch.Boxes());
  EXPECT_LE(boxes.size(), 2 * (1023u + 7));
  EXPECT_TRUE(boxes.ends_with(Utf8ToCodePage("表]")));
}

std::string exitText;

void CallExit(int id, ...) {
  va_list arguments;
  va_start(arguments, id);
  ExitWithMessage(id, arguments);
  va_end(arguments);
}

TEST(Messages, TheProcessEndsWithTheSameText) {
  ReplaceFatalExit([](const char* text) { exitText = CodePageToUtf8(text); });
  CallExit(kVE803, "x.btr", 12);
  ReplaceFatalExit(nullptr);
  EXPECT_EQ(exitText, "VE803 Btrieveファイル x.btr のオープンに失敗。(12)");
}

TEST(HeapCheck, ABadHeapIsShownWithItsPlace) {
  const Watch watch;
  EXPECT_EQ(CheckHeap({}, "a.cpp", 3), -2);
  ReplaceValidateHeap([] { return kHeapBadNode; });
  EXPECT_EQ(CheckHeap({}, "a.cpp", 3), 7);
  ReplaceValidateHeap([] { return kHeapBadBegin; });
  EXPECT_EQ(CheckHeap({}, std::string(2000, 'x').c_str(), 4), 7);
  CheckHeap({}, "b.cpp", 5);
  ReplaceValidateHeap(nullptr);
  const std::string boxes = watch.Boxes();
  EXPECT_TRUE(
      boxes.starts_with("[1000 far heap err,ヒープの中に異常ノードがあります。a.cpp,3]"
                        "[1000 far heap err,ヒープの先頭が異常です。xxx"))
      << boxes;
  EXPECT_TRUE(boxes.ends_with("x][1000 far heap err,ヒープの先頭が異常です。b.cpp,5\n]")) << boxes;
}

}  // namespace
}  // namespace qrn
