// The edit control through its window, its dispatch interface and the binding.

#include "OfficeFixture.h"
#include "PlayedInputMethod.h"
#include "SystemCalls.h"
#include "binding/tables/QRNEditTable.h"

namespace qrn::test {
namespace {

struct Edit : OfficeFixture {
  // Bound to a field and shown.
  void Bind(const wchar_t* table, const wchar_t* field) {
    OfficeFixture::Bind(edit_, field, table);
  }
  void Show() { ASSERT_EQ(edit_.Show(), S_OK); }
  void BindAndShow(const wchar_t* table, const wchar_t* field) {
    Bind(table, field);
    Show();
  }

  HWND window() { return edit_.window(); }
  std::string Shown() { return TextOf(window()); }
  void Field(const char* utf8) { edit_->ShowFieldText(Utf8ToCodePage(utf8).c_str()); }
  std::string Typed(std::u16string_view characters) {
    SetWindowTextW(window(), L"");
    Type(window(), characters);
    return Shown();
  }
  // Enters the control, sets its text and leaves it.
  std::string Left(const wchar_t* text) {
    SetFocus(window());
    SetWindowTextW(window(), text);
    SetFocus(TheForm());
    return Shown();
  }

  Hosted<CQRNEdit> edit_{L"edt1"};
};

TEST_F(Edit, StartsAsItsTableSays) {
  constexpr char kStart[] =
      "DbSource=BSTR: DbTable=BSTR: DbField=BSTR: MaxLength=I2:0 PasswordChar=BSTR: Format=BSTR: "
      "MultiLine=BOOL:0 Alignment=I4:0 ReadOnly=BOOL:0 UpperCase=BOOL:0 IMEMode=I4:0 "
      "NumericMask=BOOL:0 FormatOption=I4:0 BorderStyle=I4:1 Appearance=I2:1 Enabled=BOOL:-1 "
      "TabStop=BOOL:-1 BackColor=UI4:2147483653 ForeColor=UI4:2147483656 Text=BSTR:";
  EXPECT_EQ(edit_.Values(kStart), kStart);
}

TEST_F(Edit, WantsTheEnterKeyWhereItHasLines) {
  for (const bool lines : {false, true}) {
    Hosted<CQRNEdit> edit(L"edt2");
    const auto wantsEnter = [&] {
      CONTROLINFO info{};
      info.cb = sizeof info;
      com::Query<IOleControl>(&edit->Outer())->GetControlInfo(&info);
      return (info.dwFlags & CTRLINFO_EATS_RETURN) != 0;
    };
    edit.Set(L"MultiLine", Bool(lines));
    EXPECT_EQ(wantsEnter(), lines);
    ASSERT_EQ(edit.Show(), S_OK);
    edit.Set(L"MultiLine", Bool(!lines));
    EXPECT_EQ(wantsEnter(), lines) << "the window keeps its lines";
  }
}

TEST_F(Edit, PropertiesBecomeStylesOfTheWindow) {
  const struct {
    const wchar_t* name;
    VARIANT value;
    DWORD style;
  } cases[] = {{L"MultiLine", Bool(true), ES_MULTILINE | ES_AUTOVSCROLL},
               {L"ReadOnly", Bool(true), ES_READONLY},
               {L"UpperCase", Bool(true), ES_UPPERCASE},
               {L"Alignment", Long(1), ES_RIGHT},
               {L"Alignment", Long(2), ES_CENTER},
               {L"Alignment", Long(3), 0}};
  for (const auto& row : cases) {
    Hosted<CQRNEdit> edit(L"edt2");
    EXPECT_EQ(edit.Set(row.name, row.value), S_OK);
    ASSERT_EQ(edit.Show(), S_OK);
    const DWORD variable =
        ES_MULTILINE | ES_AUTOVSCROLL | ES_READONLY | ES_UPPERCASE | ES_RIGHT | ES_CENTER;
    const auto style = static_cast<DWORD>(GetWindowLongW(edit.window(), GWL_STYLE));
    EXPECT_EQ(style & variable, row.style) << row.style;
    const DWORD fixed = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | ES_AUTOHSCROLL;
    EXPECT_EQ(style & fixed, fixed);
  }
}

bool HasEdge(HWND window) { return (GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_CLIENTEDGE) != 0; }

// The window draws a plain border itself: its text begins inside of it.
LONG TextBegins(HWND window) {
  RECT text{};
  SendMessageW(window, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&text));
  return text.top;
}

TEST_F(Edit, TheBorderIsPlainSunkenOrNone) {
  LONG begins[2] = {};
  for (const int16_t border : {0, 1}) {
    Hosted<CQRNEdit> edit(L"edt2");
    edit.Set(L"BorderStyle", Long(border));
    edit.Set(L"Appearance", Short(0));
    ASSERT_EQ(edit.Show(), S_OK);
    EXPECT_FALSE(HasEdge(edit.window()));
    begins[border] = TextBegins(edit.window());
  }
  EXPECT_GT(begins[1], begins[0]);
  Show();
  EXPECT_TRUE(HasEdge(window()));
}

TEST_F(Edit, AtRunTimeStylesWaitForTheNextWindow) {
  Show();
  const HWND before = window();
  edit_.Set(L"Alignment", Long(1));
  edit_.Set(L"Appearance", Short(0));
  edit_.Set(L"BorderStyle", Long(0));
  EXPECT_EQ(window(), before);
  EXPECT_EQ(GetWindowLongW(window(), GWL_STYLE) & ES_RIGHT, 0);
}

TEST_F(Edit, InTheDesignerALookMakesTheWindowAnew) {
  Hosted<CQRNEdit> edit(L"edt2", false);
  ASSERT_EQ(edit.Show(), S_OK);
  edit.Set(L"Text", Text(L"kept"));
  edit.Set(L"BorderStyle", Long(0));
  EXPECT_FALSE(HasEdge(edit.window()));
  const LONG begins = TextBegins(edit.window());
  edit.Set(L"Appearance", Short(0));
  edit.Set(L"BorderStyle", Long(1));
  EXPECT_FALSE(HasEdge(edit.window()));
  EXPECT_GT(TextBegins(edit.window()), begins);
  edit.Set(L"Appearance", Short(1));
  EXPECT_TRUE(HasEdge(edit.window()));
  EXPECT_EQ(TextOf(edit.window()), "kept");
}

TEST_F(Edit, ARefusedKeyBeepsAndIsDropped) {
  edit_.Set(L"NumericMask", Bool(true));
  BindAndShow(L"Days", L"Day");
  PlayedBeep beep;
  EXPECT_EQ(Typed(u"2024/2/3\b-+.,"), "2024/2/-+.,");
  EXPECT_EQ(beep.Take(), "");
  SetWindowTextW(window(), L"");
  edit_.events.log.clear();
  Type(window(), u"1:あ 2");
  EXPECT_EQ(Shown(), "12");
  EXPECT_EQ(beep.Take(), "16 16 16 ");
  EXPECT_EQ(edit_.events.log, "1() 1() ") << "a key that is dropped changes nothing";
  edit_.Set(L"NumericMask", Bool(false));
  EXPECT_EQ(Typed(u"あ:"), "あ:");
  EXPECT_EQ(beep.Take(), "");
}

TEST_F(Edit, AReadOnlyOneShowsWhatItIsGivenAndTakesNoKeys) {
  edit_.Set(L"ReadOnly", Bool(true));
  edit_.Set(L"NumericMask", Bool(true));
  edit_.Set(L"MaxLength", Short(4));
  edit_.format.offered = PlayedFormat::kService;
  edit_.Set(L"Format", Text(L"@"));
  edit_.Set(L"FormatOption", Long(FormatEveryChar));
  BindAndShow(L"People", L"Pay");
  Field("12");
  PlayedBeep beep;
  edit_.events.log.clear();
  Type(window(), u"3456789\b");
  SendMessageW(window(), WM_PASTE, 0, 0);
  SendMessageW(window(), WM_KEYDOWN, VK_DELETE, 1);
  EXPECT_EQ(Shown(), "[12]");
  EXPECT_EQ(edit_.events.log, "");
  EXPECT_EQ(beep.Take(), "") << "what the mask lets through is the window's to refuse";
  Type(window(), u"x");
  EXPECT_EQ(beep.Take(), "16 ");
  edit_.Set(L"Text", Text(L"7"));
  EXPECT_EQ(Shown(), "[7]");
}

TEST_F(Edit, ReadOnlyWaitsForTheNextWindow) {
  Show();
  edit_.Set(L"ReadOnly", Bool(true));
  EXPECT_EQ(Typed(u"12"), "12");
  edit_.Unhost();
  Hosted<CQRNEdit> edit(L"edt2");
  edit.Set(L"ReadOnly", Bool(true));
  ASSERT_EQ(edit.Show(), S_OK);
  edit.Set(L"ReadOnly", Bool(false));
  Type(edit.window(), u"12");
  EXPECT_EQ(TextOf(edit.window()), "");
}

TEST_F(Edit, TheLimitCountsBytesHoweverTheTextComes) {
  edit_.Set(L"MaxLength", Short(5));
  BindAndShow(L"People", L"Name");
  EXPECT_EQ(Typed(u"あいう"), "あい");
  EXPECT_EQ(Typed(u"あいaう"), "あいa");
  EXPECT_EQ(Typed(u"abcdef"), "abcde");
  SendMessageW(window(), EM_SETSEL, 1, 3);
  Type(window(), u"あ");
  EXPECT_EQ(Shown(), "aあde") << "what is selected makes room";
  SetWindowTextW(window(), L"ab");
  SendMessageW(window(), EM_SETSEL, 2, 2);
  edit_.Set(L"SelText", Text(L"いろは"));
  EXPECT_EQ(Shown(), "abい");
}

TEST_F(Edit, TheLimitHoldsForPastedTexts) {
  edit_.Set(L"MaxLength", Short(5));
  Show();
  ASSERT_TRUE(OpenClipboard(TheForm()));
  EmptyClipboard();
  const wchar_t text[] = L"いろは";
  const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, sizeof text);
  memcpy(GlobalLock(block), text, sizeof text);
  GlobalUnlock(block);
  SetClipboardData(CF_UNICODETEXT, block);
  CloseClipboard();
  SendMessageW(window(), WM_PASTE, 0, 0);
  EXPECT_EQ(Shown(), "いろ");
}

TEST_F(Edit, MaxLengthIsPutIntoTheWindowAtOnce) {
  Show();
  edit_.Set(L"MaxLength", Short(7));
  EXPECT_EQ(SendMessageW(window(), EM_GETLIMITTEXT, 0, 0), 7);
  edit_.Set(L"MaxLength", Short(0));
  EXPECT_EQ(SendMessageW(window(), EM_GETLIMITTEXT, 0, 0), 32000);
}

TEST_F(Edit, ThePasswordCharacterIsTheFirstOne) {
  edit_.Set(L"PasswordChar", Text(L"*x"));
  Show();
  EXPECT_EQ(SendMessageW(window(), EM_GETPASSWORDCHAR, 0, 0), L'*');
  edit_.Set(L"PasswordChar", Text(L"ｱ"));
  EXPECT_EQ(SendMessageW(window(), EM_GETPASSWORDCHAR, 0, 0), L'ｱ');
  edit_.Set(L"PasswordChar", Text(L""));
  EXPECT_EQ(SendMessageW(window(), EM_GETPASSWORDCHAR, 0, 0), 0);
}

TEST_F(Edit, LeavingRepairsDatesAndTimes) {
  const struct {
    const wchar_t *field, *typed;
    const char* left;
  } cases[] = {
      {L"Day", L"2024/2/3", "2024/02/03"},   {L"Day", L"20240229", "2024/02/29"},
      {L"Day", L"2024/13/40", "2024/01/01"}, {L"Day", L"", ""},
      {L"Left", L"1:2:3", "01:02:03"},       {L"Left", L"123456", "12:34:56"},
      {L"Left", L"99:1", "00:00:00"},        {L"Word", L"1/2", "1/2"},
  };
  for (const auto& row : cases) {
    Hosted<CQRNEdit> edit(L"edt2");
    edit.Set(L"DbSource", Text(L"Db1"));
    edit.Set(L"DbTable", Text(L"Days"));
    edit.Set(L"DbField", Text(row.field));
    ASSERT_EQ(edit.Show(), S_OK);
    SetFocus(edit.window());
    SetWindowTextW(edit.window(), row.typed);
    SetFocus(TheForm());
    EXPECT_EQ(TextOf(edit.window()), row.left);
  }
}

TEST_F(Edit, AFormattedDateIsNotRepaired) {
  edit_.Set(L"Format", Text(L"yyyy"));
  BindAndShow(L"Days", L"Day");
  EXPECT_EQ(Left(L"2024/2/3"), "2024/2/3");
}

TEST_F(Edit, AFieldThatComesLaterIsLearntOnFocus) {
  office_.Table("Days")->Name[0] = 'X';
  BindAndShow(L"Days", L"Day");
  EXPECT_EQ(Left(L"2024/2/3"), "2024/2/3");
  office_.Table("Xays")->Name[0] = 'D';
  EXPECT_EQ(Left(L"2024/2/3"), "2024/02/03");
  edit_.Set(L"DbField", Text(L"Word"));
  EXPECT_EQ(Left(L"2024/2/3"), "2024/02/03") << "what is learnt stays";
}

TEST_F(Edit, TheHostsServiceDressesAFieldsText) {
  edit_.format.offered = PlayedFormat::kService;
  edit_.Set(L"Format", Text(L"#,##0"));
  edit_.Set(L"MaxLength", Short(8));
  Show();
  Field("漢字");
  EXPECT_EQ(Shown(), "[漢字]");
  EXPECT_EQ(edit_.format.asked, "#,##0:漢字 1041 512 0;");
  edit_.Set(L"FormatOption", Long(FormatRightAlign));
  Field("12");
  EXPECT_EQ(Shown(), "    [12]");
  EXPECT_EQ(edit_.Value(L"Text"), "ok BSTR:    [12]");
  Field("");
  EXPECT_EQ(Shown(), "");
  edit_.format.fails = true;
  edit_.Set(L"FormatOption", Long(FormatNone));
  Field("34");
  EXPECT_EQ(Shown(), "34") << "a failure leaves the text as it is";
}

TEST_F(Edit, EveryCharacterIsFormattedWithTheCaretLast) {
  edit_.format.offered = PlayedFormat::kService;
  edit_.Set(L"Format", Text(L"@"));
  edit_.Set(L"FormatOption", Long(FormatEveryChar));
  Show();
  EXPECT_EQ(Typed(u"1"), "[1]");
  EXPECT_EQ(edit_.Value(L"SelStart"), "ok I2:3");
  Type(window(), u"2");
  EXPECT_EQ(Shown(), "[[1]2]");
  Type(window(), u"\b");
  EXPECT_EQ(Shown(), "[[[1]2]");
  EXPECT_EQ(edit_.Value(L"SelStart"), "ok I2:7");
  edit_.Set(L"NumericMask", Bool(true));
  Type(window(), u"x");
  EXPECT_EQ(Shown(), "[[[1]2]") << "a refused key is not formatted";
}

TEST_F(Edit, EveryChangeOfItsTextIsToldOnce) {
  for (const bool multiLine : {false, true}) {
    Hosted<CQRNEdit> edit(L"edt2");
    edit.Set(L"MultiLine", Bool(multiLine));
    ASSERT_EQ(edit.Show(), S_OK);
    const struct {
      const char* what;
      std::function<void()> change;
    } cases[] = {
        {"a record's text", [&] { edit->ShowFieldText("a"); }},
        {"cleared", [&] { edit->ClearFieldText(); }},
        {"put by code", [&] { edit.Set(L"Text", Text(L"b")); }},
        {"put into the selection", [&] { edit.Set(L"SelText", Text(L"c")); }},
        {"typed", [&] { Type(edit.window(), u"d"); }},
    };
    for (const auto& row : cases) {
      edit.events.log.clear();
      row.change();
      EXPECT_EQ(edit.events.log, "1() ") << row.what << (multiLine ? ", several lines" : "");
    }
  }
}

TEST_F(Edit, ATextThatIsPutIsDressedAtRunTime) {
  edit_.format.offered = PlayedFormat::kService;
  edit_.Set(L"Format", Text(L"@"));
  edit_.Set(L"MaxLength", Short(6));
  Show();
  edit_.Set(L"Text", Text(L"12"));
  EXPECT_EQ(Shown(), "[12]");
  edit_.Set(L"FormatOption", Long(FormatRightAlign));
  edit_.Set(L"Text", Text(L"7"));
  EXPECT_EQ(Shown(), "   [7]");
  Hosted<CQRNEdit> design(L"edt2", false);
  design.format.offered = PlayedFormat::kService;
  design.Set(L"Format", Text(L"@"));
  ASSERT_EQ(design.Show(), S_OK);
  design.Set(L"Text", Text(L"12"));
  EXPECT_EQ(TextOf(design.window()), "12");
}

TEST_F(Edit, TheSelectionIsMovedByItsEnds) {
  Show();
  edit_.Set(L"Text", Text(L"abcdefgh"));
  SendMessageW(window(), EM_SETSEL, 2, 5);
  EXPECT_EQ(edit_.Value(L"SelStart"), "ok I2:2");
  EXPECT_EQ(edit_.Value(L"SelLength"), "ok I2:3");
  EXPECT_EQ(edit_.Value(L"SelText"), "ok BSTR:abcdef") << "from the start, one byte past the end";
  edit_.Set(L"SelStart", Short(4));
  EXPECT_EQ(edit_.Value(L"SelLength"), "ok I2:1") << "the end stays";
  edit_.Set(L"SelLength", Short(4));
  EXPECT_EQ(edit_.Value(L"SelLength"), "ok I2:4");
  edit_.Set(L"SelLength", Short(5));
  EXPECT_EQ(edit_.Value(L"SelLength"), "ok I2:4") << "past the text";
  EXPECT_EQ(edit_.Value(L"SelText"), "ok BSTR:abcdefgh");
  edit_.Set(L"SelText", Text(L"XY"));
  EXPECT_EQ(Shown(), "abcdXY");
  EXPECT_NE(SendMessageW(window(), EM_CANUNDO, 0, 0), 0);
  edit_.Set(L"SelStart", Short(0));
  edit_.Set(L"SelLength", Short(8));
  EXPECT_EQ(edit_.Value(L"SelLength"), "ok I2:6") << "held against the stored text";
  EXPECT_FALSE(SUCCEEDED(edit_.Set(L"SelStart", Short(-1))));
}

TEST_F(Edit, TheSelectedTextNeverHalvesACharacter) {
  Show();
  edit_.Set(L"Text", Text(L"aいう"));
  SendMessageW(window(), EM_SETSEL, 0, 1);
  const CallResult got = Get(edit_.object(), L"SelText");
  EXPECT_EQ(std::wstring(got.value->bstrVal), L"a");
}

TEST_F(Edit, TheDesignerHasNoSelection) {
  Hosted<CQRNEdit> edit(L"edt2", false);
  ASSERT_EQ(edit.Show(), S_OK);
  for (const wchar_t* name : {L"SelStart", L"SelLength", L"SelText"}) {
    EXPECT_EQ(edit.Value(name), "80020009:800A018A");
    EXPECT_EQ(Put(edit.object(), name, {Short(1)}).scode, static_cast<HRESULT>(0x800A017F));
  }
}

TEST_F(Edit, TheDesignerSeesTheFieldsNameAndLength) {
  const struct {
    const wchar_t *table, *field;
    const char* length;
  } cases[] = {{L"People", L"Name", "ok I2:20"},
               {L"People", L"Pay", "ok I2:0"},
               {L"People", L"name", "ok I2:0"},
               {L"", L"Name", "ok I2:0"}};
  for (const auto& row : cases) {
    Hosted<CQRNEdit> edit(L"edt2", false);
    ASSERT_EQ(edit.Show(), S_OK);
    edit.Set(L"DbSource", Text(L"Db1"));
    edit.Set(L"DbTable", Text(row.table));
    edit.Set(L"DbField", Text(row.field));
    EXPECT_EQ(TextOf(edit.window()), Utf16ToCodePage(reinterpret_cast<const char16_t*>(row.field)));
    EXPECT_EQ(edit.Value(L"MaxLength"), row.length);
    edit.Set(L"DbField", Text(L"Town"));
    EXPECT_NE(TextOf(edit.window()), "Town") << "a second name changes nothing";
  }
}

TEST_F(Edit, AtRunTimeAFieldsNameIsOnlyStored) {
  BindAndShow(L"People", L"Name");
  EXPECT_EQ(Shown(), "");
  EXPECT_EQ(edit_.Value(L"MaxLength"), "ok I2:0");
}

TEST_F(Edit, TheInputMethodIsSetWhileTheFocusIsInside) {
  PlayedInputMethod method;
  edit_.Set(L"IMEMode", Long(4));
  Show();
  method.mode = 1;  // English, half width
  method.Take();
  SetFocus(window());
  EXPECT_EQ(method.Take(), "17:0 enable1 4:1 16:20 8:2 ");
  SetFocus(TheForm());
  EXPECT_EQ(method.Take(), "4:0 16:9 8:2 ");
  edit_.Set(L"IMEMode", Long(0));
  SetFocus(window());
  SetFocus(TheForm());
  EXPECT_EQ(method.Take(), "");
}

TEST_F(Edit, ARightAlignedTextIsEnteredAtItsEnd) {
  edit_.Set(L"FormatOption", Long(FormatRightAlign));
  edit_.Set(L"MaxLength", Short(6));
  Show();
  Field("12");
  SendMessageW(window(), EM_SETSEL, 0, 0);
  SetFocus(window());
  EXPECT_EQ(edit_.Value(L"SelStart"), "ok I2:6");
  SetFocus(TheForm());
}

}  // namespace
}  // namespace qrn::test
