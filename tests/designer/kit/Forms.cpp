#include "tests/designer/kit/Forms.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "host/designer/document/FileText.h"
#include "host/form/SourceText.h"
#include "platform/CodePage.h"

namespace qrn::test {
namespace {

using namespace designer;

constexpr char kMenus[] = R"frm(VERSION 5.00
Object = "{F9043C88-F6F2-101A-A3C9-08002B2F49FB}#1.2#0"; "COMDLG32.OCX"
Begin VB.Form frmMain 
   AutoRedraw      =   -1  'True
   BackColor       =   &H00C0E0FF&
   Caption         =   "表示 ""ソ"" 'x'"
   ClientHeight    =   3195
   ClientLeft      =   165
   ClientTop       =   735
   ClientWidth     =   4680
   BeginProperty Font 
      Name            =   "ＭＳ ゴシック"
      Size            =   9.75
      Charset         =   128
      Weight          =   400
      Underline       =   0   'False
      Italic          =   0   'False
      Strikethrough   =   0   'False
   EndProperty
   Icon            =   "main.frx":0000
   LinkTopic       =   "Form1"
   ScaleHeight     =   3195
   ScaleWidth      =   4680
   StartUpPosition =   3  'Windows の既定値
   Begin VB.PictureBox picInner 
      Height          =   1695
      Left            =   120
      ScaleHeight     =   109
      ScaleMode       =   3  'ﾋﾟｸｾﾙ
      ScaleWidth      =   133
      TabIndex        =   2
      Top             =   120
      Width           =   2055
      Begin VB.Frame fraDeep 
         Caption         =   "Deep"
         Height          =   60
         Left            =   8
         TabIndex        =   3
         Top             =   8
         Width           =   100
         Begin VB.OptionButton opt 
            Caption         =   "B"
            Height          =   255
            Index           =   1
            Left            =   120
            TabIndex        =   5
            Top             =   480
            Width           =   1215
         End
         Begin VB.OptionButton opt 
            Caption         =   "A"
            Height          =   255
            Index           =   0
            Left            =   120
            TabIndex        =   4
            Top             =   240
            Value           =   -1  'True
            Width           =   1215
         End
      End
   End
   Begin VB.TextBox txtMany 
      Height          =   735
      Left            =   2400
      MultiLine       =   -1  'True
      TabIndex        =   1
      Text            =   "main.frx":0018
      Top             =   120
      Width           =   2055
   End
   Begin VB.CommandButton cmdGo 
      Caption         =   "実行(&G)"
      Default         =   -1  'True
      Height          =   375
      Left            =   2400
      TabIndex        =   0
      Top             =   960
      Width           =   1215
   End
   Begin MSComDlg.CommonDialog dlg 
      Left            =   3720
      Top             =   960
      _ExtentX        =   847
      _ExtentY        =   847
      _Version        =   393216
   End
   Begin VB.Line linEdge 
      X1              =   120
      X2              =   4560
      Y1              =   2040
      Y2              =   2040
   End
   Begin VB.Timer tmr 
      Interval        =   1000
      Left            =   4200
      Top             =   960
   End
   Begin VB.Menu mnuFile 
      Caption         =   "ﾌｧｲﾙ(&F)"
      Begin VB.Menu mnuOpen 
         Caption         =   "開く(&O)..."
         Shortcut        =   ^O
      End
      Begin VB.Menu mnuRecent 
         Caption         =   "-"
         Index           =   0
      End
   End
End
Attribute VB_Name = "frmMain"
Attribute VB_GlobalNameSpace = False
Attribute VB_Creatable = False
Attribute VB_PredeclaredId = True
Attribute VB_Exposed = False
Option Explicit

' 表
Private Sub cmdGo_Click()
    MsgBox "ソ" & vbCrLf & _
           "表"
End Sub
Private Sub Form_Load()
End Sub
)frm";

constexpr char kMdi[] = R"frm(VERSION 5.00
Begin VB.MDIForm mdi 
   BackColor       =   &H8000000C&
   Caption         =   "MDI"
   ClientHeight    =   5000
   ClientLeft      =   165
   ClientTop       =   735
   ClientWidth     =   7000
   LinkTopic       =   "MDIForm1"
   StartUpPosition =   3
   Begin VB.PictureBox picBar 
      Align           =   1
      Height          =   495
      Left            =   0
      ScaleHeight     =   435
      ScaleWidth      =   6940
      TabIndex        =   0
      Top             =   0
      Width           =   7000
   End
End
Attribute VB_Name = "mdi"
)frm";

constexpr char kUserScale[] = R"frm(VERSION 4.00
Begin VB.Form  F 'remark
' a comment of a person

   ClientHeight=3000
   ClientWidth=6000
      ScaleWidth =  100.5
   ScaleHeight=  50
   ScaleMode=0
   Unknown stuff here
   Caption = "unclosed
   Begin LIB.Box  box1
     Left=10.25 ' left
     Top=  5
     Width = 20:Height = 2
     BeginProperty Columns {0713E452-850A-101B-AFC0-4210102A8DA7}
        NumItems=2
        BeginProperty Column1 {0713E452-850A-101B-AFC0-4210102A8DA7}
           Text = $"f.frx":0000
        EndProperty
        loose line
     EndProperty
     _ExtentX = 100
   End ' of box1
   Begin LIB.Box  box2
   End
End
Attribute VB_Name = "F"

Attribute VB_Exposed = False

Sub a()
x = 1)frm";

std::string WithEnds(std::string text, const char* end) {
  std::string with;
  for (const char byte : text) {
    if (byte == '\n') {
      with += end;
    } else {
      with += byte;
    }
  }
  return with;
}

std::string Companion() {
  std::string bytes(
      "\x14\0\0\0lt\0\0\x0C\0\0\0"
      "icon-bytes..",
      24);
  bytes += std::string("\x08line\r\n", 7) + "12";
  return bytes;
}

std::vector<FormCase> MakeCases() {
  std::vector<FormCase> cases{
      {"menus, arrays, containers in containers, a companion", VbBytes(kMenus), Companion()},
      {"an MDI form", VbBytes(kMdi), {}},
      {"blanks, comments, half-known lines, a scale of the user's", VbBytes(kUserScale), {}},
      {"line ends of another system", WithEnds(kUserScale, "\n"), {}},
      {"line ends of a third one", WithEnds(kMdi, "\r"), {}},
      {"mixed line ends", VbBytes(kMdi) + "a\rb\nc\r\n\r\r\n\n", {}},
      {"UTF-8", "\xEF\xBB\xBF" + std::string(kMenus), Companion()},
      {"nothing behind the form's end", VbBytes("VERSION 5.00\nBegin VB.Form F \nEnd"), {}},
      {"bytes that are no characters, and an end of text",
       VbBytes(kMdi) + "x = \"\x81\x20\xFF\xFD\"\r\n\x1A behind\0it" + std::string("\0\r\n", 3),
       {}},
  };
  return cases;
}

EventInfo Event(const char* name, std::vector<EventParameter> parameters) {
  return {name, std::move(parameters)};
}

PropertyInfo Bound(const char* name) {
  PropertyInfo info;
  info.name = name;
  info.initial = std::string();
  info.offer = OfferOf(name);
  return info;
}

ClassInfo BoxClass() {
  ClassInfo box;
  box.library = "LIB";
  box.name = box.stem = "Box";
  box.properties = ExtenderProperties();
  for (const char* name : {"DbSource", "DbTable", "DbField", "DbIndex", "Text"}) {
    box.properties.push_back(Bound(name));
  }
  PropertyInfo mode;
  mode.name = "Mode";
  mode.kind = PropertyKind::Enumeration;
  mode.members = {{0, "Off", {}}, {1, "On", {}}, {-2, "Half", {}}};
  mode.initial = int32_t{0};
  box.properties.push_back(mode);
  PropertyInfo colour;
  colour.name = "BackColor";
  colour.kind = PropertyKind::Colour;
  box.properties.push_back(colour);
  PropertyInfo font;
  font.name = "Font";
  font.kind = PropertyKind::Font;
  box.properties.push_back(font);
  PropertyInfo picture;
  picture.name = "Picture";
  picture.kind = PropertyKind::Picture;
  box.properties.push_back(picture);
  PropertyInfo secret = Bound("Secret");
  secret.hidden = true;
  box.properties.push_back(secret);
  PropertyInfo renamed = Bound("DbListFields");
  renamed.savedName = "DbListField";
  box.properties.push_back(renamed);
  PropertyInfo fixed = Bound("Version");
  fixed.readOnly = true;
  box.properties.push_back(fixed);
  box.events = {Event("Change", {}),
                Event("SetData", {{"Cancel", "Boolean", false}, {"Field", "String", true}})};
  box.usualEvent = "Change";
  form::Property extentX{"_ExtentX", 0, int32_t{2143}, false, {}, {}};
  form::Property extentY{"_ExtentY", 0, int32_t{873}, false, {}, {}};
  form::Property backColor{"BackColor", 0, int32_t{0xC0C0C0}, false, {}, {}};
  box.firstProperties = {backColor, extentX, extentY};
  return box;
}

ClassInfo SourceClass() {
  ClassInfo source;
  source.library = "LIB";
  source.name = source.stem = "Source";
  source.hasSize = false;
  source.width = source.height = 480;
  source.properties = {ExtenderProperties()[0], Bound("DDFDir")};
  return source;
}

// Runs of blanks as one.
std::string OneBlank(std::string text) {
  const auto repeated = [](char a, char b) { return a == ' ' && b == ' '; };
  text.erase(std::unique(text.begin(), text.end(), repeated), text.end());
  return text;
}

void Walk(const Design& design, ControlId container, std::string* tree) {
  for (const ControlId id : design.Inside(container)) {
    if (!tree->empty() && tree->back() != '(') *tree += ' ';
    *tree += design.Name(id);
    if (design.Inside(id).empty()) continue;
    *tree += '(';
    Walk(design, id, tree);
    *tree += ')';
  }
}

}  // namespace

std::string VbBytes(const std::string& utf8) { return Utf8ToCodePage(WithEnds(utf8, "\r\n")); }

const std::vector<FormCase>& FormCases() {
  static const std::vector<FormCase> cases = MakeCases();
  return cases;
}

std::vector<std::string> RepositoryForms() {
  std::vector<std::string> paths;
  for (const char* folder : {"/examples", "/tests"}) {
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(std::string(QRN_ROOT) + folder)) {
      if (entry.path().extension() == ".frm") paths.push_back(entry.path().string());
    }
  }
  std::sort(paths.begin(), paths.end());
  return paths;
}

TestClasses::TestClasses() : classes_{BoxClass(), SourceClass()} {}

const ClassInfo* TestClasses::Find(std::string_view library, std::string_view name) const {
  for (const ClassInfo& info : classes_) {
    if (form::SameWord(info.library, library) && form::SameWord(info.name, name)) return &info;
  }
  return FurnitureClasses::Find(library, name);
}

std::optional<form::LibraryReference> TestClasses::Library(std::string_view library) const {
  if (!form::SameWord(library, "LIB")) return std::nullopt;
  return form::LibraryReference{"{0D4A7E11-1111-2222-3333-444455556666}", 1, 10, "lib.ocx", 0};
}

const TestClasses& Classes() {
  static const TestClasses classes;
  return classes;
}

std::unique_ptr<Design> Designed(const std::string& bytes, const std::string& companion) {
  form::Mistakes mistakes;
  StoredForm stored{FormDocument::Read(bytes, mistakes),
                    std::make_unique<designer::Companion>("main.frx", companion)};
  if (!stored.document) throw std::runtime_error(mistakes.Text("form"));
  return std::make_unique<Design>(std::move(stored), Classes());
}

std::string FormWith(const std::string& utf8Lines, const std::string& utf8Code) {
  return VbBytes(
      "VERSION 5.00\nBegin VB.Form F \n   ClientHeight    =   6000\n   ClientWidth     =   9000\n"
      "   ScaleHeight     =   6000\n   ScaleWidth      =   9000\n" +
      utf8Lines + "End\nAttribute VB_Name = \"F\"\n" + utf8Code);
}

ControlId IdOf(const Design& design, const std::string& name) {
  if (name == design.Name(design.form())) return design.form();
  for (const ControlId id : design.All()) {
    const auto index = design.Index(id);
    if (design.Name(id) == name) return id;
    if (index && design.Name(id) + "(" + std::to_string(*index) + ")" == name) return id;
  }
  return 0;
}

std::string Tree(const Design& design) {
  std::string tree;
  Walk(design, design.form(), &tree);
  return tree;
}

std::string Lines(const Design& design, const std::string& name) {
  const Block& block = design.At(IdOf(design, name));
  std::string lines;
  for (const Item& item : block.items()) {
    if (item.block && item.block->kind() == BlockKind::Control) continue;
    std::string bytes = item.bytes;
    if (item.block) item.block->Write(&bytes);
    if (!lines.empty()) lines += '|';
    lines +=
        OneBlank(std::string(form::Trimmed(WithoutEnd(design.document().text().Decode(bytes)))));
  }
  return lines;
}

std::string LineValue(const Design& design, const std::string& name, const std::string& property) {
  const std::string lines = Lines(design, name);
  const std::string head = "|" + property + " = ";
  const size_t at = lines.find(head);
  if (at == std::string::npos) return {};
  const size_t from = at + head.size();
  return lines.substr(from, lines.find('|', from) - from);
}

}  // namespace qrn::test
