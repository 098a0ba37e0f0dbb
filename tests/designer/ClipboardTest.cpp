// Controls go through the clipboard as text.
#include <gtest/gtest.h>

#include "host/designer/model/Clipboard.h"
#include "host/designer/model/PropertyList.h"
#include "host/form/FormFile.h"
#include "tests/designer/kit/Actions.h"
#include "tests/designer/kit/Forms.h"

namespace qrn::test {
namespace {

using namespace designer;

constexpr char kSource[] =
    "   Begin VB.Frame fra \n      Left            =   120\n      TabIndex        =   0\n"
    "      Top             =   120\n      Width           =   900\n"
    "      Begin VB.TextBox txt \n         Index           =   0\n         TabIndex        =   2\n"
    "      End\n"
    "      Begin VB.TextBox txt \n         Index           =   1\n         TabIndex        =   1\n"
    "      End\n   End\n"
    "   Begin LIB.Box box \n      Left            =   2000\n      TabIndex        =   3\n"
    "      Tag             =   \"表\"\n   End\n";
constexpr char kBoxCode[] = "Private Sub box_Change()\nEnd Sub\n";

std::string Copied(const Design& design, const std::vector<std::string>& names) {
  Ids ids;
  for (const std::string& name : names) ids.push_back(IdOf(design, name));
  return CopyText(design, ids);
}

TEST(Clipboard, IsPastedUnderNewNames) {
  struct Case {
    const char* what;
    std::vector<std::string> copied;
    const char* into;
    const char* tree;
  } const cases[] = {
      {"one", {"box"}, "F", "Box1 fra(txt txt) box"},
      {"an array stays one", {"fra"}, "F", "Frame1(Text1 Text1) fra(txt txt) box"},
      {"into a frame", {"box"}, "fra", "fra(Box1 txt txt) box"},
      {"beside the selected one", {"box"}, "txt(1)", "fra(Box1 txt txt) box"},
      {"in their order", {"box", "fra"}, "box", "Frame1(Text1 Text1) Box1 fra(txt txt) box"},
  };
  for (const Case& row : cases) {
    const std::string bytes = FormWith(kSource, kBoxCode);
    const auto design = Designed(bytes);
    const std::string text = Copied(*design, row.copied);
    design->Select({IdOf(*design, row.into)});
    EXPECT_FALSE(Paste(*design, text, Grid{})) << row.what;
    EXPECT_EQ(Tree(*design), row.tree) << row.what;
    form::Mistakes mistakes;
    form::ReadFormFile(Actions::Saved(*design), mistakes);
    EXPECT_FALSE(mistakes.Any()) << mistakes.Text(row.what);
    EXPECT_EQ(design->selection().size(), row.copied.size()) << row.what;
    design->Undo();
    EXPECT_EQ(Actions::Saved(*design), bytes) << row.what;
  }
}

TEST(Clipboard, KeepsFreeNamesSoThatCutControlsFindTheirCode) {
  const auto design = Designed(FormWith(kSource, kBoxCode));
  std::string text;
  EXPECT_FALSE(Cut(*design, {IdOf(*design, "box")}, &text));
  EXPECT_EQ(Tree(*design), "fra(txt txt)");
  EXPECT_EQ(design->UndoName(Language::English), "Cut");
  design->Select({IdOf(*design, "fra")});
  EXPECT_FALSE(Paste(*design, text, Grid{}));
  EXPECT_EQ(Tree(*design), "fra(box txt txt)");
  EXPECT_FALSE(Paste(*design, text, Grid{}));
  EXPECT_EQ(Tree(*design), "fra(Box1 box txt txt)");
}

TEST(Clipboard, BringsPicturesTextsAndLibrariesToAnotherForm) {
  const auto from = Designed(
      "VERSION 5.00\r\nObject = \"{0D4A7E11-1111-2222-3333-444455556666}#1.A#0\"; \"lib.ocx\"\r\n" +
          FormWith(kSource).substr(14),
      "some record before");
  from->Select({IdOf(*from, "box")});
  PropertyList list(*from);
  EXPECT_FALSE(list.Enter("Text", "two\r\nlines"));
  EXPECT_FALSE(list.EnterPicture("Picture", "BM-picture"));
  const std::string text = Copied(*from, {"box"});
  const auto to = Designed(FormWith(""));
  EXPECT_FALSE(Paste(*to, text, Grid{}));
  EXPECT_EQ(to->TextValue(IdOf(*to, "box"), "Text"), "two\r\nlines");
  const FormImages images = Actions::Images(*to);
  EXPECT_NE(images.companion.bytes.find("BM-picture"), std::string::npos);
  EXPECT_NE(images.form.find("Object = \"{0D4A7E11"), std::string::npos);
  // In the form that it came from the records are there already.
  EXPECT_FALSE(Paste(*from, text, Grid{}));
  const std::string records = Actions::Images(*from).companion.bytes;
  EXPECT_EQ(records.find("BM-picture"), records.rfind("BM-picture"));
}

TEST(Clipboard, RefusesWhatIsNoControls) {
  struct Case {
    const char* text;
    TextId refusal;
  } const cases[] = {
      {"", TextId::NoControlsInText},
      {"some words", TextId::NoControlsInText},
      {"VERSION 5.00", TextId::NoControlsInText},
      {"Begin VB.Form f\nEnd\n", TextId::NoControlsInText},
      {"Begin VB.Menu m\nEnd\n", TextId::NoControlsInText},
      {"Begin VB.Label\nEnd\n", TextId::TextUnreadable},
      {"Begin VB.Label x\n", TextId::TextUnreadable},
      {"Begin VB.Label \xE2\x82\xAC\nEnd\n", TextId::TextUnreadable},
  };
  const auto design = Designed(FormWith(kSource));
  for (const Case& row : cases) {
    EXPECT_EQ(RefusalOf(Paste(*design, row.text, Grid{})), row.refusal) << row.text;
    EXPECT_FALSE(design->CanUndo()) << row.text;
  }
}

}  // namespace
}  // namespace qrn::test
