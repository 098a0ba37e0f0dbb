// Controls come onto a form, get names, lie in containers, layers and the order of the Tab key.
#include <gtest/gtest.h>

#include "host/designer/model/Controls.h"
#include "host/designer/model/Names.h"
#include "host/designer/model/TabOrder.h"
#include "tests/designer/kit/Actions.h"
#include "tests/designer/kit/Forms.h"

namespace qrn::test {
namespace {

using namespace designer;

constexpr char kLayers[] =
    "   Begin VB.Label a \n      Left            =   0\n      TabIndex        =   0\n   End\n"
    "   Begin VB.Frame f \n      Height          =   3000\n      Left            =   1200\n"
    "      TabIndex        =   1\n      Top             =   600\n      Width           =   4000\n"
    "      Begin VB.Label b \n         Left            =   120\n         TabIndex        =   2\n"
    "         Top             =   240\n      End\n"
    "      Begin VB.Frame g \n         Left            =   300\n         TabIndex        =   3\n"
    "      End\n   End\n"
    "   Begin VB.Label c \n      TabIndex        =   4\n   End\n"
    "   Begin VB.Menu mnu \n   End\n";

std::string TabOrderText(const Design& design) {
  std::string text;
  for (const ControlId id : TabOrderOf(design)) {
    if (!text.empty()) text += ' ';
    text += design.Name(id) + ":" +
            std::to_string(static_cast<int>(design.NumberValue(id, "TabIndex", -1)));
  }
  return text;
}

TEST(Controls, AreAddedAsVisualBasicDoes) {
  const auto design = Designed(FormWith(kLayers));
  ControlId added = 0;
  EXPECT_FALSE(AddControl(*design, {"VB", "CommandButton", IdOf(*design, "f"), {15, 30, 1215, 495}},
                          &added));
  EXPECT_EQ(Tree(*design), "a f(Command1 b g) c");
  EXPECT_EQ(design->selection(), Ids{added});
  EXPECT_EQ(Lines(*design, "Command1"),
            "Begin VB.CommandButton Command1|Caption = \"Command1\"|Height = 495|Left = "
            "15|TabIndex = 5|Top = 30|Width = 1215|End");
  EXPECT_FALSE(AddControl(*design, {"LIB", "Box", design->form(), {0, 0, 1440, 720}}));
  EXPECT_EQ(Lines(*design, "Box1"),
            "Begin LIB.Box Box1|_ExtentX = 2540|_ExtentY = 1270|BackColor = &H00C0C0C0&|Height = "
            "720|Left = 0|TabIndex = 6|Top = 0|Width = 1440|End");
  EXPECT_FALSE(AddControl(*design, {"LIB", "Source", design->form(), {60, 45, 9, 9}}));
  EXPECT_EQ(Lines(*design, "Source1"), "Begin LIB.Source Source1|Left = 60|Top = 45|End");
  const std::string file = Actions::Saved(*design);
  EXPECT_EQ(file.find("Object = \"{0D4A7E11-1111-2222-3333-444455556666}#1.A#0\"; \"lib.ocx\"\r\n"),
            14u);
  EXPECT_EQ(file.find("Object", 20), std::string::npos);
  EXPECT_EQ(design->UndoName(Language::English), "Add Source1");
  EXPECT_EQ(RefusalOf(AddControl(*design, {"VB", "Label", IdOf(*design, "a"), {}})),
            TextId::ContainerExpected);
}

TEST(Controls, AreDeletedWithWhatLiesInThem) {
  struct Case {
    std::vector<std::string> names;
    const char* tree;
    const char* tabOrder;
  } const cases[] = {
      {{"a"}, "f(b g) c", "f:0 b:1 g:2 c:3"},       {{"f"}, "a c", "a:0 c:1"},
      {{"g", "f", "b"}, "a c", "a:0 c:1"},          {{"b", "c"}, "a f(g)", "a:0 f:1 g:2"},
      {{"F"}, "a f(b g) c", "a:0 f:1 b:2 g:3 c:4"},
  };
  for (const Case& row : cases) {
    const std::string bytes = FormWith(kLayers, "Private Sub b_Click()\nEnd Sub\n");
    const auto design = Designed(bytes);
    Ids ids;
    for (const std::string& name : row.names) ids.push_back(IdOf(*design, name));
    EXPECT_FALSE(DeleteControls(*design, ids));
    EXPECT_EQ(Tree(*design), row.tree);
    EXPECT_EQ(TabOrderText(*design), row.tabOrder);
    EXPECT_NE(Actions::Saved(*design).find("Private Sub b_Click()"), std::string::npos);
    design->Undo();
    EXPECT_EQ(Actions::Saved(*design), bytes);
  }
}

TEST(Controls, MoveBetweenContainersAndStayWhereTheyAre) {
  struct Case {
    const char* what;
    std::vector<std::string> names;
    const char* into;
    const char* tree;
    TextId refusal;
  } const cases[] = {
      {"into a frame", {"a"}, "f", "f(a b g) c", TextId::kCount},
      {"two, in their order", {"c", "a"}, "f", "f(a c b g)", TextId::kCount},
      {"out of it", {"b"}, "F", "b a f(g) c", TextId::kCount},
      {"a frame into a frame below", {"g"}, "F", "g a f(b) c", TextId::kCount},
      {"where it lies", {"b"}, "f", "a f(b g) c", TextId::kCount},
      {"into itself", {"f"}, "f", "a f(b g) c", TextId::ContainerExpected},
      {"into what lies in it", {"f"}, "g", "a f(b g) c", TextId::ContainerExpected},
      {"into a label", {"a"}, "c", "a f(b g) c", TextId::ContainerExpected},
  };
  for (const Case& row : cases) {
    const auto design = Designed(FormWith(kLayers));
    Ids ids;
    for (const std::string& name : row.names) ids.push_back(IdOf(*design, name));
    const Place before = PlaceOnForm(*design, ids[0]);
    EXPECT_EQ(RefusalOf(MoveInto(*design, ids, IdOf(*design, row.into))), row.refusal) << row.what;
    EXPECT_EQ(Tree(*design), row.tree) << row.what;
    EXPECT_EQ(PlaceOnForm(*design, ids[0]), before) << row.what;
    const auto again = Designed(Actions::Saved(*design));
    EXPECT_EQ(Tree(*again), row.tree) << row.what;
    while (design->CanUndo()) design->Undo();
    EXPECT_EQ(Actions::Saved(*design), FormWith(kLayers)) << row.what;
  }
}

TEST(Controls, AreIndentedAsDeepAsTheyLie) {
  const auto design = Designed(FormWith(kLayers));
  EXPECT_FALSE(MoveInto(*design, {IdOf(*design, "a")}, IdOf(*design, "g")));
  EXPECT_NE(Actions::Saved(*design).find("\r\n         Begin VB.Label a \r\n            Left"),
            std::string::npos);
}

TEST(Controls, GoToTheFrontAndBackBeforeMenus) {
  struct Case {
    Refusal (*move)(Design&, const Ids&);
    std::vector<std::string> names;
    const char* tree;
  } const cases[] = {
      {BringToFront, {"c"}, "c a f(b g)"},    {BringToFront, {"c", "f"}, "f(b g) c a"},
      {BringToFront, {"g"}, "a f(g b) c"},    {SendToBack, {"a"}, "f(b g) c a"},
      {SendToBack, {"f", "a"}, "c a f(b g)"}, {BringToFront, {"a"}, "a f(b g) c"},
  };
  for (const Case& row : cases) {
    const auto design = Designed(FormWith(kLayers));
    Ids ids;
    for (const std::string& name : row.names) ids.push_back(IdOf(*design, name));
    EXPECT_FALSE(row.move(*design, ids));
    EXPECT_EQ(Tree(*design), row.tree);
    const std::string saved = Actions::Saved(*design);
    EXPECT_GT(saved.find("VB.Menu"), saved.rfind("VB.Label")) << row.tree;
  }
}

TEST(TabOrder, FollowsTheClicks) {
  const auto design = Designed(FormWith(kLayers));
  EXPECT_FALSE(PutTabOrder(*design, {IdOf(*design, "c"), IdOf(*design, "b"), IdOf(*design, "c")}));
  EXPECT_EQ(TabOrderText(*design), "c:0 b:1 a:2 f:3 g:4");
  EXPECT_FALSE(PutTabOrder(*design, {}));
  EXPECT_EQ(design->history().StepCount(), 1u);
}

TEST(Names, AreMadeNewAndNotTwice) {
  const auto design =
      Designed(FormWith("   Begin VB.Label Label1 \n   End\n   Begin VB.Label LABEL3 \n   End\n"
                        "   Begin VB.Menu Label2 \n   End\n"));
  EXPECT_EQ(NewName(*design, "Label"), "Label4");
  EXPECT_EQ(NewName(*design, "Label", {"label4"}), "Label5");
  EXPECT_EQ(NewName(*design, "Text"), "Text1");
  EXPECT_EQ(NewName(*design, "no name"), "Control1");
}

TEST(Names, AreRefusedWithTheReason) {
  struct Case {
    const char* control;
    const char* name;
    TextId refusal;
  } const cases[] = {
      {"a", "A", TextId::kCount},
      {"a", "顧客名", TextId::kCount},
      {"a", "x_1", TextId::kCount},
      {"a", "", TextId::NameMissing},
      {"a", "1x", TextId::NameNoName},
      {"a", "x y", TextId::NameNoName},
      {"a", "x.y", TextId::NameNoName},
      {"a", "sub", TextId::NameReserved},
      {"a", "B", TextId::NameTaken},
      {"a", "MNU", TextId::NameTaken},
      {"a", "f", TextId::NameTaken},
      {"F", "b", TextId::NameTaken},
      {"F", "frmOther", TextId::kCount},
      {"a", "a234567890123456789012345678901234567890", TextId::kCount},
      {"a", "a2345678901234567890123456789012345678901", TextId::NameTooLong},
      {"a",
       "\xE2\x82\xAC"
       "x",
       TextId::NotWritable},
  };
  for (const Case& row : cases) {
    const auto design = Designed(FormWith(kLayers));
    EXPECT_EQ(RefusalOf(Rename(*design, IdOf(*design, row.control), row.name)), row.refusal)
        << row.name;
    EXPECT_EQ(design->CanUndo(), row.refusal == TextId::kCount) << row.name;
  }
}

TEST(Names, OfFormsStandInTheirCodeToo) {
  const auto design = Designed(FormWith(kLayers));
  EXPECT_FALSE(Rename(*design, design->form(), "frmNew"));
  const std::string saved = Actions::Saved(*design);
  EXPECT_NE(saved.find("Begin VB.Form frmNew \r\n"), std::string::npos);
  EXPECT_NE(saved.find("Attribute VB_Name = \"frmNew\"\r\n"), std::string::npos);
}

TEST(Names, OfArraysAreSharedByTheirElements) {
  const auto design = Designed(FormWith(
      "   Begin VB.Label x \n      Index           =   0\n   End\n"
      "   Begin VB.Label x \n      Index           =   1\n   End\n"
      "   Begin VB.Label y \n   End\n   Begin VB.Frame z \n      Index           =   7\n   End\n"));
  EXPECT_EQ(RefusalOf(Rename(*design, IdOf(*design, "y"), "x")), TextId::NameTaken);
  EXPECT_EQ(RefusalOf(Rename(*design, IdOf(*design, "z"), "x")), TextId::NameTaken);
  EXPECT_EQ(RefusalOf(PutIndex(*design, IdOf(*design, "y"), 1)), TextId::kCount);
  EXPECT_EQ(RefusalOf(Rename(*design, IdOf(*design, "y"), "x")), TextId::IndexTaken);
  EXPECT_EQ(RefusalOf(PutIndex(*design, IdOf(*design, "y"), 2)), TextId::kCount);
  EXPECT_EQ(RefusalOf(Rename(*design, IdOf(*design, "y"), "X")), TextId::kCount);
  EXPECT_EQ(RefusalOf(PutIndex(*design, IdOf(*design, "x(0)"), 1)), TextId::IndexTaken);
  EXPECT_EQ(RefusalOf(PutIndex(*design, IdOf(*design, "x(0)"), {})), TextId::ArrayNeedsIndex);
  EXPECT_EQ(RefusalOf(PutIndex(*design, IdOf(*design, "z"), {})), TextId::kCount);
  for (const int index : {-1, 32768}) {
    EXPECT_EQ(RefusalOf(PutIndex(*design, IdOf(*design, "z"), index)), TextId::IndexRange);
  }
}

}  // namespace
}  // namespace qrn::test
