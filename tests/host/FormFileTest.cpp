// Form files, well and badly written.
#include <gtest/gtest.h>

#include "host/form/FormFile.h"
#include "host/form/FrxFile.h"
#include "host/form/SourceText.h"
#include "platform/CodePage.h"

namespace qrn::form {
namespace {

constexpr char kForm[] = R"(VERSION 5.00
Object = "{0D4A7E11-1111-2222-3333-444455556666}#1.A#0"; "qrnbt350.ocx"
Begin VB.Form frmMain 
   BackColor       =   &H8000000F&
   Caption         =   "顧客 ""A"" 'x' = 表示ソ"
   ClientHeight    =   3195
   Icon            =   "main.frx":0A3C
   ScaleWidth      =   4680.5  'User
   BeginProperty Font {0BE35203-8F91-11CE-9DE3-00AA004BB851} 
      Name            =   "ＭＳ Ｐゴシック"
      Size            =   9
      Italic          =   0   'False
   EndProperty
   Begin VB.Frame fraOne 
      Begin QRNBTRLib.QRNEdit edtName 
         Enabled         =   -1  'True
         Text            =   $"main.frx":0000
         Index           =   1
      End
      Begin QRNBTRLib.QRNEdit edtName 
         Index           =   0
      End
   End
   Begin VB.Label lblEnd 
      TabCaption(0)   =   "x"
   End
End
Attribute VB_Name = "Main"
Attribute VB_Exposed = False
Option Explicit
Private Sub Form_Load()
End Sub
)";

FormFile Read(const std::string& utf8, Mistakes& mistakes) {
  return ReadFormFile(Utf8ToCodePage(utf8), mistakes);
}

template <class T>
const T* ValueOf(const ControlNode& control, std::string_view name) {
  const Property* property = control.Find(name);
  return property ? std::get_if<T>(&property->value) : nullptr;
}

TEST(FormFile, HoldsWhatTheFileSays) {
  Mistakes mistakes;
  const FormFile file = Read(kForm, mistakes);
  ASSERT_FALSE(mistakes.Any()) << mistakes.Text("frmMain.frm");
  ASSERT_EQ(file.libraries.size(), 1u);
  EXPECT_EQ(file.libraries[0].typeLibrary, "{0D4A7E11-1111-2222-3333-444455556666}");
  EXPECT_EQ(file.libraries[0].minor, 10);
  EXPECT_EQ(file.libraries[0].fileName, "qrnbt350.ocx");
  EXPECT_EQ(file.Name(), "Main");
  EXPECT_EQ(*ValueOf<int32_t>(file.form, "backcolor"), static_cast<int32_t>(0x8000000F));
  EXPECT_EQ(*ValueOf<std::string>(file.form, "Caption"), "顧客 \"A\" 'x' = 表示ソ");
  EXPECT_EQ(*ValueOf<double>(file.form, "ScaleWidth"), 4680.5);
  EXPECT_EQ(ValueOf<FileReference>(file.form, "Icon")->offset, 0xA3Cu);
  EXPECT_FALSE(ValueOf<FileReference>(file.form, "Icon")->isText);
  const Property* font = file.form.Find("Font");
  ASSERT_TRUE(font && font->isGroup);
  EXPECT_EQ(font->groupClass, "{0BE35203-8F91-11CE-9DE3-00AA004BB851}");
  EXPECT_EQ(std::get<std::string>(font->group[0].value), "ＭＳ Ｐゴシック");
  EXPECT_EQ(font->line, 9);
}

TEST(FormFile, KnowsWhereTheCodeBegins) {
  Mistakes mistakes;
  const FormFile file = Read(kForm, mistakes);
  ASSERT_EQ(file.code.size(), 3u);
  EXPECT_EQ(file.code[0], "Option Explicit");
  EXPECT_EQ(SourceLines(kForm)[static_cast<size_t>(file.codeLine) - 1], "Option Explicit");
}

TEST(FormFile, ComesInEitherEncodingAndWithAnyLineEnds) {
  Mistakes mistakes;
  std::string windows;
  for (const char byte : std::string(kForm))
    windows += byte == '\n' ? "\r\n" : std::string(1, byte);
  const FormFile marked = ReadFormFile("\xEF\xBB\xBF" + windows, mistakes);
  const FormFile plain = Read(kForm, mistakes);
  EXPECT_FALSE(mistakes.Any()) << mistakes.Text("frmMain.frm");
  EXPECT_EQ(*ValueOf<std::string>(marked.form, "Caption"),
            *ValueOf<std::string>(plain.form, "Caption"));
  EXPECT_EQ(marked.code, plain.code);
}

struct BadForm {
  const char* text;
  const char* expected;  // "line: reason", by its beginning
};

const std::string kHead = "VERSION 5.00\nBegin VB.Form F\n";

// clang-format off
const BadForm kBadBodies[] = {
    {"End", ""},  // the body that is right: no mistake
    {"Caption = \"x\nEnd", "3: Caption: the closing quote is missing"},
    {"Caption = x\nEnd", "3: Caption: the value is no number; a text stands in quotes"},
    {"Caption = \"x\" y\nEnd", "3: Caption: what stands behind the value"},
    {"Caption\nEnd", "3: a line 'Name = value'"},
    {"= 5\nEnd", "3: the name of the property"},
    {"Caption =\nEnd", "3: Caption: the value is missing"},
    {"A = &HG\nEnd", "3: A: &H needs"},
    {"A = &H123456789\nEnd", "3: A: &H needs"},
    {"A = 1e999\nEnd", "3: A: the value is no number"},
    {"A = -\nEnd", "3: A: the value is no number"},
    {"A = \"x\":zz\nEnd", "3: A: a file name in quotes"},
    {"A = $\"x\"\nEnd", "3: A: $\"file\" needs"},
    {"A = $5\nEnd", "3: A: a text in quotes"},
    {"Caption = \"x\"", "2: 'End' is missing for F"},
    {"Begin VB.Label L\nEnd", "2: 'End' is missing for F"},
    {"Begin VBLabel L\nEnd\nEnd", "3: expected is 'Begin Library.Class Name'"},
    {"Begin VB.Label\nEnd\nEnd", "3: expected is 'Begin"},
    {"Begin VB.Label 5x\nEnd\nEnd", "3: expected is 'Begin"},
    {"BeginProperty Font\nEnd", "3: 'EndProperty' is missing for Font"},
    {"BeginProperty\nEndProperty\nEnd", "3: expected is 'BeginProperty Name"},
    {"BeginProperty Font {12}\nEndProperty\nEnd", "3: expected is 'BeginProperty Name"},
    {"Begin VB.Label L\nEnd\nBegin VB.Label l\nEnd\nEnd", "5: the name l stands already on line 3"},
    {"Begin VB.Label F\nEnd\nEnd", "3: the name F stands already on line 2"},
    {"Begin VB.Label L\nIndex = 0\nEnd\nBegin VB.Label L\nEnd\nEnd", "6: the name L stands already on line 3"},
    {"Begin VB.Label L\nIndex = 2\nEnd\nBegin VB.Label L\nIndex = 2\nEnd\nEnd", "6: the name L stands already"},
    {"Begin VB.Label L\nIndex = -2\nEnd\nEnd", "4: Index: a whole number"},
};

const BadForm kBadFiles[] = {
    {"", "1: a form file begins with a line 'VERSION 5.00'"},
    {"hello", "1: a form file begins"},
    {"VERSION 4.00\nBegin VB.Form F\nEnd", "1: only 'VERSION 5.00'"},
    {"VERSION 5.00", "2: 'Begin VB.Form Name' is expected"},
    {"VERSION 5.00\nBegin VB.MDIForm F\nEnd", "2: only VB.Form is a form here, not VB.MDIForm"},
    {"VERSION 5.00\nObject = \"{1}#1.0#0\"; \"a.ocx\"\nBegin VB.Form F\nEnd", "2: Object: expected is"},
    {"VERSION 5.00\nObject = \"*\\G{0D4A7E11-1111-2222-3333-444455556666}#1.0#0\"; \"a\"\nBegin VB.Form F\nEnd", "2: Object: expected"},
    {"VERSION 5.00\nObject = \"{0D4A7E11-1111-2222-3333-444455556666}#1.0#0\"\nBegin VB.Form F\nEnd", "2: Object: expected"},
    {"VERSION 5.00\nBegin VB.Form F\nEnd\nAttribute VB_Name", "4: a line 'Name = value'"},
};
// clang-format on

void ExpectMistake(const std::string& text, const BadForm& bad) {
  Mistakes mistakes;
  Read(text, mistakes);
  if (*bad.expected == '\0') {
    EXPECT_FALSE(mistakes.Any()) << mistakes.Text(bad.text);
    return;
  }
  ASSERT_TRUE(mistakes.Any()) << bad.text;
  const Mistake& first = mistakes.List().front();
  EXPECT_TRUE((std::to_string(first.line) + ": " + first.reason).starts_with(bad.expected))
      << mistakes.Text(bad.text);
}

TEST(FormFile, AMistakeIsToldWithLineAndReason) {
  for (const BadForm& bad : kBadBodies) ExpectMistake(kHead + bad.text, bad);
  for (const BadForm& bad : kBadFiles) ExpectMistake(bad.text, bad);
}

TEST(FormFile, DeepNestingIsRefused) {
  std::string deep = "VERSION 5.00\n";
  for (int i = 0; i < 10000; ++i) deep += "Begin VB.Form F\n";
  std::string groups = kHead;
  for (int i = 0; i < 10000; ++i) groups += "BeginProperty A\n";
  for (const std::string& text : {deep, groups}) {
    Mistakes mistakes;
    Read(text, mistakes);
    ASSERT_TRUE(mistakes.Any());
    EXPECT_NE(mistakes.Text("").find("too deep"), std::string::npos);
  }
}

TEST(FormFile, CutAnywhereItNeverFailsBadly) {
  const std::string whole = Utf8ToCodePage(kForm);
  const size_t attributes = whole.find("Attribute");
  for (size_t length = 0; length + 1 < attributes; ++length) {
    Mistakes mistakes;
    ReadFormFile(whole.substr(0, length), mistakes);
    EXPECT_TRUE(mistakes.Any()) << length;
  }
}

std::string LittleEndian(uint32_t value, int size) {
  std::string bytes;
  for (int i = 0; i < size; ++i) bytes += static_cast<char>(value >> (8 * i));
  return bytes;
}

std::string PictureRecord(const std::string& before, const std::string& image) {
  const std::string body = before + std::string("lt\0\0", 4) +
                           LittleEndian(static_cast<uint32_t>(image.size()), 4) + image;
  return LittleEndian(static_cast<uint32_t>(body.size()), 4) + body;
}

TEST(FrxFile, GivesPicturesAtTheirOffsets) {
  const std::string first = PictureRecord("", "BMone");
  const std::string frx = first + PictureRecord(std::string(16, '\x55'), "BMtwo");
  EXPECT_EQ(PictureAt(frx, 0), "BMone");
  EXPECT_EQ(PictureAt(frx, static_cast<uint32_t>(first.size())), "BMtwo");
  EXPECT_EQ(PictureAt(PictureRecord("", ""), 0), "");
}

TEST(FrxFile, GivesTextsShortAndLong) {
  const std::string japanese = Utf8ToCodePage("表示\r\nソ");
  const std::string longText(300, 'x');
  const std::string frx = LittleEndian(static_cast<uint32_t>(japanese.size()), 1) + japanese +
                          "\xFF" + LittleEndian(300, 2) + longText;
  EXPECT_EQ(TextAt(frx, 0), "表示\r\nソ");
  EXPECT_EQ(TextAt(frx, static_cast<uint32_t>(japanese.size() + 1)), longText);
}

TEST(FrxFile, WhatIsCutOrForeignGivesNothing) {
  const std::string whole = PictureRecord("", "BMone");
  for (size_t length = 0; length < whole.size(); ++length) {
    EXPECT_FALSE(PictureAt(whole.substr(0, length), 0)) << length;
  }
  EXPECT_FALSE(PictureAt(whole, static_cast<uint32_t>(whole.size())));
  EXPECT_FALSE(PictureAt(whole, 0xFFFFFFFF));
  EXPECT_FALSE(PictureAt(LittleEndian(8, 4) + "notapict", 0));
  EXPECT_FALSE(PictureAt(LittleEndian(0xFFFFFFFF, 4) + std::string("lt\0\0", 4), 0));
  EXPECT_FALSE(
      TextAt("\x05"
             "abcd",
             0));
  EXPECT_FALSE(TextAt("\xFF\x01", 0));
  EXPECT_FALSE(TextAt("", 0));
}

}  // namespace
}  // namespace qrn::form
