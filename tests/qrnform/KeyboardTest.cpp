// Forms worked by someone without a mouse: the keyboard is always somewhere, and where it should
// be, with boxes, other forms, disabled and hidden controls on the way.
#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, which it needs.
#include <oleacc.h>

#include "com/Bstr.h"
#include "com/Com.h"
#include "com/Variant.h"
#include "host/runner/Form.h"
#include "tests/qrnform/FormRun.h"

namespace qrn::tests {
namespace {

std::string Button(const std::string& name, int place, const std::string& more = {}) {
  return Piece("QRNBTRLib.QRNBtn " + name, place, more);
}

const std::string kThree = Edit("edtOne", 0) + Edit("edtTwo", 1) + Button("btnGo", 2);
const std::string kWithDatabase =
    Piece("QRNBTRLib.QRNBtr dbFirst", 0) + Edit("edtOne", 1) + Edit("edtTwo", 2);
const std::string kInFrame =
    Holder("VB.Frame fra", 0, Edit("edtOne", 0) + Piece("VB.TextBox txtTwo", 1)) +
    Edit("edtLast", 4);
const std::string kFurniture = Piece("VB.TextBox txtOne", 0) + Piece("VB.TextBox txtTwo", 1) +
                               Piece("VB.CommandButton cmdGo", 2);
const std::string kDefault = Piece("VB.CommandButton cmdGo", 2, " Default = -1\n");
constexpr char kTellsEnter[] =
    "Private Sub cmdGo_Click()\n  Print \"go\"\nEnd Sub\n"
    "Public Function Shown(name)\n  Shown = Replace(Controls(name).Text, vbCrLf, \"|\")\nEnd "
    "Function\n";
constexpr char kVE802[] = "message \"VE802 DbSourceまたはDbTableﾌﾟﾛﾊﾟﾃｨが不正です。\" OK\n";

const FormCase kWalks[] = {
    {"a box at a button's click gives the keyboard back", kThree,
     "Private Sub btnGo_SetData()\n  btnGo.Abort = True\nEnd Sub\n"
     "Private Sub btnGo_Click()\n  MsgBox \"done\"\nEnd Sub\n",
     std::string("key Tab times 2\nkey Enter\n") + kVE802 +
         "message \"done\" OK\nprint ActiveControl.Name\nkey Shift+Tab\ntype \"b\"\n"
         "print edtTwo.Text\n",
     "btnGo\nb\n"},
    {"a box with no owner does too, also when a key answers it", kThree, "",
     "type \"a\"\nkey Tab times 2\nkey Space\nkey Enter\nkey Tab\ntype \"b\"\nprint edtOne.Text\n",
     "ab\n"},
    {"a wrong value: box, and back where it stands", kThree,
     "Private Sub edtOne_LostFocus()\n  If edtOne.Text <> \"\" Then Exit Sub\n  MsgBox \"empty\"\n"
     "  edtOne.SetFocus\nEnd Sub\n"
     "Private Sub edtTwo_GotFocus()\n  Print \"two\"\nEnd Sub\n"
     "Private Sub edtTwo_LostFocus()\n  Print \"left two\"\nEnd Sub\n",
     "key Tab\nmessage \"empty\" OK\ntype \"1\"\nkey Tab\ntype \"2\"\n"
     "print edtOne.Text\nprint edtTwo.Text\n",
     "two\n1\n2\n"},
    {"a wrong value on furniture", kFurniture,
     "Private Sub txtOne_LostFocus()\n  If txtOne.Text <> \"\" Then Exit Sub\n  MsgBox \"empty\"\n"
     "  txtOne.SetFocus\nEnd Sub\n",
     "key Tab\nmessage \"empty\" OK\ntype \"1\"\nkey Tab\ntype \"2\"\n"
     "print txtOne.Text\nprint txtTwo.Text\n",
     "1\n2\n"},
    {"a box while a text changes", kThree,
     "Private Sub edtOne_Change()\n  If edtOne.Text = \"ab\" Then MsgBox \"two\"\nEnd Sub\n",
     "type \"ab\"\nmessage \"two\" OK\ntype \"c\"\nprint edtOne.Text\n", "abc\n"},
    {"the database control is no stop", kWithDatabase, "",
     "type \"1\"\nkey Tab\ntype \"2\"\nkey Tab\ntype \"3\"\nkey Shift+Tab times 2\ntype \"4\"\n"
     "print edtOne.Text\nprint edtTwo.Text\n",
     "134\n2\n"},
    {"the file may say of every control that it is no stop",
     Piece("QRNBTRLib.QRNBtr dbFirst", 0, " TabStop = 0\n") + Edit("edtOne", 1, " TabStop = 0\n") +
         Edit("edtTwo", 2),
     "", "type \"x\"\nkey Tab\ntype \"y\"\nprint edtTwo.Text\nprint dbFirst.TabStop\n",
     "xy\nFalse\n"},
    {"disabled controls are passed",
     Edit("edtOne", 0) + Edit("edtTwo", 1, " Enabled = 0\n") +
         Button("btnGo", 2, " Enabled = 0\n") + Edit("edtLast", 3),
     "",
     "key Tab\ntype \"l\"\nkey Tab\ntype \"o\"\nkey Shift+Tab\ntype \"L\"\n"
     "print edtOne.Text\nprint edtLast.Text\n",
     "o\nlL\n"},
    {"who disables itself hands on", kThree,
     "Private Sub edtOne_Change()\n  If Len(edtOne.Text) = 2 Then edtOne.Enabled = False\nEnd "
     "Sub\n",
     "type \"abcd\"\nprint edtOne.Text\nprint edtTwo.Text\nprint ActiveControl.Name\n",
     "ab\ncd\nedtTwo\n"},
    {"who hides itself hands on", kThree,
     "Private Sub edtOne_Change()\n  If Len(edtOne.Text) = 2 Then edtOne.Visible = False\nEnd "
     "Sub\n",
     "type \"abcd\"\nprint edtOne.Text\nprint edtTwo.Text\n", "ab\ncd\n"},
    {"furniture that disables or hides itself hands on", kFurniture,
     "Private Sub txtOne_Change()\n  If Len(txtOne.Text) = 1 Then txtOne.Enabled = False\nEnd Sub\n"
     "Private Sub txtTwo_Change()\n  If Len(txtTwo.Text) = 1 Then txtTwo.Visible = False\nEnd Sub\n"
     "Private Sub cmdGo_Click()\n  Print \"go\"\nEnd Sub\n",
     "type \"ab\"\nkey Space\nprint txtOne.Text\nprint txtTwo.Text\n", "go\na\nb\n"},
    {"a frame that is disabled or hidden takes its controls along", kInFrame,
     "Private Sub edtOne_Change()\n  txtTwo.SetFocus\nEnd Sub\n"
     "Private Sub txtTwo_Change()\n  If txtTwo.Text = \"b\" Then fra.Enabled = False\nEnd Sub\n"
     "Private Sub edtLast_Change()\n  If edtLast.Text <> \"c\" Then Exit Sub\n"
     "  fra.Enabled = True: edtOne.SetFocus: fra.Visible = False\nEnd Sub\n",
     "type \"ab\"\ntype \"c\"\ntype \"d\"\nprint txtTwo.Text\nprint edtLast.Text\n", "b\ncd\n"},
    {"a control in a frame that goes leaves the keyboard to the next", kInFrame,
     "Private Sub edtOne_Change()\n  edtOne.Visible = False\nEnd Sub\n",
     "type \"a\"\ntype \"b\"\nprint edtOne.Text\nprint txtTwo.Text\n", "a\nb\n"},
    {"with nothing left to use, nothing is lost", kThree,
     "Private Sub edtOne_Change()\n  edtTwo.Enabled = False: btnGo.Enabled = False\n"
     "  edtOne.Enabled = False\nEnd Sub\n"
     "Private Sub Form_KeyPress(KeyAscii As Integer)\n  KeyPreview = False\n"
     "  edtTwo.Enabled = True: edtTwo.SetFocus\nEnd Sub\n"
     "Private Sub Form_Load()\n  KeyPreview = False\nEnd Sub\n"
     "Public Sub Preview()\n  KeyPreview = True\nEnd Sub\n",
     "type \"a\"\ncall Preview\nkey X\ntype \"b\"\nprint edtTwo.Text\n", "b\n"},
    {"several lines tell of every change", Piece("VB.TextBox txtOne", 0, " MultiLine = -1\n"),
     "Private Sub txtOne_Change()\n  Print txtOne.Text;\nEnd Sub\n",
     "set txtOne.Text = \"a\"\nkey End\ntype \"b\"\n", "aab"},
    {"a step that makes a box goes on once it is answered", kThree,
     "Private Sub edtOne_Change()\n  MsgBox \"changed\"\n  Print \"after\"\nEnd Sub\n"
     "Public Sub Ask()\n  MsgBox \"asked\"\nEnd Sub\n"
     "Private Sub edtTwo_GotFocus()\n  MsgBox \"got\"\nEnd Sub\n",
     "set edtOne.Text = \"a\"\nmessage \"changed\" OK\ncall Ask\nmessage \"asked\" OK\n"
     "focus edtTwo\nmessage \"got\" OK\ntype \"b\"\nprint edtTwo.Text\n",
     "after\nb\n"},
    {"Enter is a new line where there are several, else the default button's",
     Piece("VB.TextBox txtOne", 0, " MultiLine = -1\n") + Piece("VB.TextBox txtTwo", 1) + kDefault,
     kTellsEnter,
     "type \"a\"\nkey Enter\ntype \"b\"\nprint Shown(\"txtOne\")\n"
     "key Tab\ntype \"c\"\nkey Enter\nprint ActiveControl.Name\n",
     "a|b\ngo\ncmdGo\n"},
    {"only what stands behind a single & is a caption's key",
     Edit("edtOne", 0) + Piece("VB.Label lblWord", 1, " Caption = \"Word && rest &\"\n") +
         Edit("edtTwo", 2) + Piece("VB.CommandButton cmdGo", 3, " Caption = \"Go (&W)\"\n"),
     "Private Sub cmdGo_Click()\n  Print \"go\"\nEnd Sub\n",
     "key Alt+W\nprint ActiveControl.Name\n", "go\ncmdGo\n"},
    {"so it is in the module's edit",
     Edit("edtOne", 0, " MultiLine = -1\n") + Edit("edtTwo", 1) + kDefault, kTellsEnter,
     "type \"a\"\nkey Enter\ntype \"b\"\nkey Enter\ntype \"c\"\nprint Shown(\"edtOne\")\n"
     "key Tab\ntype \"d\"\nkey Enter\nprint ActiveControl.Name\n",
     "a|b|c\ngo\ncmdGo\n"},
};

// A list and a combo, with ten items each.
const std::string kLists = Edit("edtOne", 0) + Piece("QRNBTRLib.QRNListBox lst", 1) +
                           Piece("QRNBTRLib.QRNComboBox cbo", 3, " Style = 2\n") +
                           Edit("edtLast", 4);
const std::string kTenItems =
    "Private Sub Form_Load()\n  Dim item\n  lst.Height = 1500\n"
    "  For Each item In Array(\"abc\", \"あさ\", \"いけ\", \"うみ\", \"漢字\", \"x1\", \"x2\", "
    "\"x3\", "
    "\"x4\", \"アイ\")\n    lst.AddItem item\n    cbo.AddItem item\n  Next\nEnd Sub\n";

const FormCase kListWalks[] = {
    {"arrows, Page keys and ends", kLists, kTenItems,
     "key Tab\nkey Down\nprint lst.Text\nkey Down times 2\nprint lst.Text\nkey Up\nprint lst.Text\n"
     "key End\nprint lst.Text\nkey PageUp\nexpect lst.ListIndex <> 9\nkey Home\nprint lst.Text\n"
     "key PageDown\nexpect lst.ListIndex <> 0\n",
     "abc\nいけ\nあさ\nアイ\nabc\n"},
    {"first letters, kana and kanji", kLists, kTenItems,
     "key Tab\ntype \"う\"\nprint lst.Text\ntype \"漢\"\nprint lst.Text\ntype \"ア\"\n"
     "print lst.Text\ntype \"xx\"\nprint lst.Text\n",
     "うみ\n漢字\nアイ\nx2\n"},
    {"a combo opens by F4 and Alt+Down, and Enter takes the choice", kLists, kTenItems,
     "focus cbo\nkey F4\nkey Down times 2\nkey Enter\nprint cbo.Text\n"
     "key Alt+Down\nkey End\nkey Enter\nprint cbo.Text\nkey Home\nprint cbo.Text\n"
     "type \"う\"\nprint cbo.Text\nkey Tab\ntype \"t\"\nprint edtLast.Text\n",
     "あさ\nアイ\nabc\nうみ\nt\n"},
    {"Enter in a list is a click", kLists,
     kTenItems + "Private Sub lst_Click()\n  Print \"click \" & lst.Text\nEnd Sub\n",
     "key Tab\nkey Down\nkey Enter\n", "click abc\nclick abc\n"},
    {"a box at a choice gives the keyboard back to the list", kLists,
     kTenItems +
         "Private Sub lst_Click()\n  If lst.ListIndex = 1 Then MsgBox \"chosen\"\nEnd Sub\n",
     "key Tab\nkey Down times 2\nmessage \"chosen\" OK\nkey Down\nprint lst.Text\n"
     "key Shift+Tab\ntype \"a\"\nprint edtOne.Text\n",
     "いけ\na\n"},
};

// The wheel moves what the mouse is over, not what has the keyboard.
const FormCase kWheels[] = {
    {"a list scrolls and keeps its choice", kLists, kTenItems,
     "key Tab\nkey Down\nwheel lst down times 2\nprint lst.Text\n"
     "click lst at 10 5\nexpect lst.ListIndex <> 0\nwheel lst up times 9\nclick lst at 10 5\n"
     "print lst.Text\n",
     "abc\nabc\n"},
    {"a closed combo chooses",
     Piece("QRNBTRLib.QRNComboBox cbo", 0, " Style = 2\n") + Piece("QRNBTRLib.QRNListBox lst", 2),
     kTenItems,
     "focus cbo\nkey Home\nwheel cbo down\nprint cbo.Text\nwheel cbo up\nprint cbo.Text\n",
     "あさ\nabc\n"},
};

class Keyboard : public testing::TestWithParam<FormCase> {};

TEST_P(Keyboard, IsNeverLost) { ExpectForm(GetParam()); }

INSTANTIATE_TEST_SUITE_P(Walks, Keyboard, testing::ValuesIn(kWalks));
INSTANTIATE_TEST_SUITE_P(Lists, Keyboard, testing::ValuesIn(kListWalks));
INSTANTIATE_TEST_SUITE_P(Wheels, Keyboard, testing::ValuesIn(kWheels));

struct FailureCase {
  const char* name;
  const char* more;  // properties of edtTwo
  const char* script;
  const char* failure;
  bool design = false;
};

const FailureCase kFailures[] = {
    {"a disabled control", " Enabled = 0\n", "focus edtTwo\n",
     "script:1: edtTwo does not take the keyboard"},
    {"a hidden control", " Visible = 0\n", "focus edtTwo\n",
     "script:1: edtTwo does not take the keyboard"},
    {"one that sends it on", "", "focus edtOne\nfocus edtThree\n",
     "script:2: edtThree does not take the keyboard"},
    {"a click on a disabled control", " Enabled = 0\n", "click edtTwo\n",
     "script:1: edtTwo is disabled"},
    {"a form that is hidden", "", "call Hide\nkey Tab\n",
     "script:2: nothing of the program has the keyboard"},
    {"a text for nobody", "",
     "set edtOne.Enabled = False\nset edtTwo.Enabled = False\n"
     "set edtThree.Enabled = False\nkey Tab\ntype \"x\"\n",
     "script:5: nothing of the program has the keyboard"},
    {"a box before an answer", "", "print Asked\nmessage \"asked\" OK\n",
     "script:1: the box \"asked\" (title \"\") comes in between"},
    {"a control being designed", "", "focus edtTwo\n",
     "script:1: edtTwo does not take the keyboard while the form is designed", true},
    {"code of a form being designed", "", "call Asked\n",
     "script:1: nothing is called while the form is designed", true},
};

class LostKeyboard : public testing::TestWithParam<FailureCase> {};

TEST_P(LostKeyboard, FailsTheStep) {
  const FailureCase& given = GetParam();
  const std::string controls =
      Edit("edtOne", 0) + Edit("edtTwo", 1, given.more) + Edit("edtThree", 2);
  const RunResult result =
      RunForms({{FormText(controls,
                          "Private Sub edtThree_GotFocus()\n  edtOne.SetFocus\nEnd Sub\n"
                          "Public Function Asked()\n  MsgBox \"asked\"\nEnd Function\n")},
                given.script,
                given.design});
  EXPECT_EQ(result.failure, given.failure) << given.name;
  EXPECT_EQ(result.left, 0) << given.name;
}

INSTANTIATE_TEST_SUITE_P(Steps, LostKeyboard, testing::ValuesIn(kFailures));

// A label has no window: another stands for it, before the control that comes next.
TEST(LabelsOfAForm, NameTheNextControlToScreenReaders) {
  const OpenForms open(
      {FormText(Edit("edtOther", 2) + Piece("VB.Label lbl", 0, " Caption = \"Name(&N)\"\n") +
                    Piece("QRNBTRLib.QRNListBox lst", 1),
                "")},
      false);
  const auto nameIn = [&](const wchar_t* contained) {
    HWND inside = nullptr;
    for (HWND own = nullptr; !inside;) {
      own = FindWindowExW(open.first().Window(), own, L"QRNBT350.Control", nullptr);
      if (!own) return std::wstring(L"no window");
      inside = FindWindowExW(own, nullptr, contained, nullptr);
    }
    com::Com<IAccessible> object;
    AccessibleObjectFromWindow(inside, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                               object.putVoid());
    com::Variant self;
    self->vt = VT_I4;
    com::Bstr name;
    if (object) object->get_accName(*self.get(), name.put());
    return std::wstring(name.view());
  };
  EXPECT_EQ(nameIn(L"ATL:ListBox"), L"Name(N)");
  EXPECT_EQ(nameIn(L"ATL:Edit"), L"") << "the label is not its own";
}

TEST(KeyboardBetweenForms, ReturnsToTheControlThatHadIt) {
  const std::string first =
      FormText(kThree,
               "Private Sub edtTwo_KeyDown(KeyCode As Integer, Shift As Integer)\n"
               "  If KeyCode = vbKeyF4 Then frmOther.Show vbModal\n"
               "  If KeyCode = vbKeyF6 Then frmOther.Show\nEnd Sub\n");
  const std::string second =
      FormText(Edit("edtOne", 0) + Piece("VB.CommandButton cmdClose", 1, " Cancel = -1\n"),
               "Private Sub cmdClose_Click()\n  MsgBox \"bye\"\n  Unload Me\nEnd Sub\n"
               "Private Sub Form_Unload(Cancel As Integer)\n  Print edtOne.Text\nEnd Sub\n",
               "frmOther");
  for (const char* opens : {"F4", "F6"}) {
    const RunResult result = RunForms(
        {{first, second},
         std::string("key Tab\ntype \"a\"\nkey ") + opens +
             "\ntype \"x\"\nkey Escape\nkey Enter\nprint ActiveControl.Name\ntype \"b\"\n"
             "print edtTwo.Text\nkey F4\ntype \"y\"\nkey Alt+F4\ntype \"c\"\nprint edtTwo.Text\n"});
    EXPECT_EQ(result.failure, "") << opens;
    EXPECT_EQ(result.printed, "x\nedtTwo\nab\ny\nabc\n") << opens;
    EXPECT_EQ(result.faults, 0) << result.told;
    EXPECT_EQ(result.left, 0);
  }
}

TEST(KeyboardBetweenForms, GoesToOneThatIsShownAgain) {
  const std::string first = FormText(kThree, "Public Sub Other()\n  frmOther.Show\nEnd Sub\n");
  const RunResult result = RunForms({{first, FormText(Edit("edtOne", 0), "", "frmOther")},
                                     "call Other\ntype \"a\"\nshow frmTest\ntype \"b\"\n"
                                     "print frmOther.edtOne.Text\nprint frmTest.edtOne.Text\n"});
  EXPECT_EQ(result.failure, "");
  EXPECT_EQ(result.printed, "a\nb\n");
}

// A window that holds others, and one that is activated, keeps the keyboard from nobody.
TEST(KeyboardOfAForm, IsHandedOnByItsWindows) {
  OpenForms forms({FormText(kInFrame, "")}, false);
  const host::FormControl* stop = forms.first().Find(L"edtOne");
  ASSERT_NE(SetFocus(forms.first().Find(L"fra")->Window()), nullptr);
  EXPECT_TRUE(stop->HasFocus());
  SetFocus(nullptr);
  SendMessageW(forms.first().Window(), WM_ACTIVATE, WA_ACTIVE, 0);
  EXPECT_TRUE(stop->HasFocus());
}

// Where the system gives it no keyboard yet, code finds the control that will have it.
TEST(KeyboardOfAMinimizedForm, IsForItsFirstStop) {
  OpenForms forms({FormText(" WindowState = 1\n" + kThree, "")}, false);
  ASSERT_NE(forms.first().Focused(), nullptr);
  EXPECT_EQ(forms.first().Focused()->name(), L"edtOne");
}

// A setting that the module refuses as it loads, as long as it lives.
class BadSetting {
 public:
  BadSetting() { Write("13"); }
  BadSetting(const BadSetting&) = delete;
  BadSetting& operator=(const BadSetting&) = delete;
  ~BadSetting() { Write(nullptr); }

 private:
  static void Write(const char* value) {
    WritePrivateProfileStringA("quorin350", "sign_nibble", value, "quorin.ini");
  }
};

TEST(BoxesAtTheStart, OfALoadingModuleCanBeAnswered) {
  const BadSetting bad;
  const RunResult result = RunForms({{FormText(kThree, "")},
                                     "message \"VE823 サイン・ニブルの指定が不正です。\" OK\n"
                                     "type \"a\"\nprint edtOne.Text\n"});
  EXPECT_EQ(result.failure, "");
  EXPECT_EQ(result.printed, "a\n");
}

TEST(BoxesAtTheStart, OfALoadingModuleEndAScriptThatDoesNotKnowThem) {
  const BadSetting bad;
  const RunResult result = RunForms({{FormText(kThree, "")}, "type \"a\"\n"});
  EXPECT_NE(result.failure.find("VE823"), std::string::npos) << result.failure;
}

}  // namespace
}  // namespace qrn::tests
