// Form files, the code behind forms, companion files and user scripts from bytes of any kind. Each
// input is read as it stands and as a choice of fragments, one a byte, which reaches deeper than
// random bytes do.
#include <string_view>

#include "host/form/FormFile.h"
#include "host/form/FrxFile.h"
#include "host/form/SourceText.h"
#include "host/form/UserScript.h"
#include "host/form/VbCode.h"
#include "tests/fuzz/FuzzInput.h"

namespace {

using namespace qrn::form;
using namespace qrn::fuzz;

// clang-format off
constexpr std::string_view kFormParts[] = {
    "VERSION 5.00\n", "Object = \"{0D4A7E11-1111-2222-3333-444455556666}#1.0#0\"; \"a.ocx\"\n",
    "Begin VB.Form F\n", "Begin A.B n\n", "Begin VB.Label m\n", "End\n", "Index = 1\n",
    "Index = -1\n", "BeginProperty Font {0BE35203-8F91-11CE-9DE3-00AA004BB851}\n",
    "BeginProperty x\n", "EndProperty\n", "Caption = \"a\"\"b\"\n", "Icon = \"a.frx\":0A3C\n",
    "Text = $\"a.frx\":0\n", "Back = &H8000000F&\n", "x = -1 'True\n", "y = 1.5e300\n",
    "z = ^S\n", "Attribute VB_Name = \"F\"\n", "\n", " ", "\"", "=", "&H", "\x81\x5C", "\r",
    "\x1A", "Sub F()\n", "End Sub\n",
};
// clang-format on

// clang-format off
constexpr std::string_view kCodeParts[] = {
    "Sub ", "Function ", "F", "(", ")", "n", " As ", "Integer", "String", " * 5", "Dim ",
    "Static ", "Private ", "Const ", "Enum E\n", "End Enum\n", "End Sub\n", "End Function\n",
    "If ", " Then ", "Else", "ElseIf ", "End If\n", "For i = 1 To 3\n", "Next ", "i", ", ",
    "Do\n", "Loop\n", "Select Case ", "Case ", "Is ", ">", " To ", "End Select\n", "\n", "\n",
    ":", " = ", "\"a\"\"b\"", "\"", "#1/2/2003#", "#", "&HFF&", "1.5", "%", "$", "!", ".", " _\n",
    "ReDim ", "Preserve ", "Erase ", "LBound(", "LenB(", "Me", "Print ", ";", "Debug.Print ",
    "On Error ", "GoTo 0\n", "Resume Next\n", "Let ", "Type T\n", "End Type\n", "Property Get ",
    "End", "Option ", "Explicit\n", "Base 1\n", "ByVal ", "Optional ", "Mid(", "-",
    "\xE8\xA1\xA8", "'", "Rem ", "Attribute ", "=", "With ", "End With\n", "New ", ":=",
};
// clang-format on

constexpr std::string_view kStepParts[] = {
    "click ", "a",        ".",       "(",      ")",       "1",       ",",     "\"x\"",     "\"",
    " at ",   "2 ",       "key ",    "Ctrl+",  "F5",      "expect ", " = ",   "contains ", "wait ",
    "until ", "within ",  "dialog ", "press ", "choose ", "\n",      "True",  "-0.5",      "shot ",
    "of ",    "message ", "ok",      "times ", "type ",   "set ",    "call ",
};

template <size_t N>
std::string Assembled(const std::string_view (&parts)[N], std::string_view choice) {
  std::string text;
  for (const char byte : choice) text += parts[static_cast<unsigned char>(byte) % N];
  return text;
}

void CheckLines(const Mistakes& mistakes, size_t lineCount) {
  for (const Mistake& mistake : mistakes.List()) {
    if (mistake.line < 0 || static_cast<size_t>(mistake.line) > lineCount + 1)
      Fail("a line that is not there");
    if (mistake.reason.empty()) Fail("a mistake without a reason");
  }
}

void TryForm(std::string_view bytes) {
  Mistakes mistakes;
  const FormFile file = ReadFormFile(bytes, mistakes);
  CheckLines(mistakes, SourceLines(bytes).size());
  if (!mistakes.Any() && !IsName(file.form.name))
    Fail("a form without a name and without a mistake");
}

void TryCode(std::string_view bytes) {
  const std::vector<std::string> lines = SourceLines(bytes);
  Mistakes mistakes;
  const ScriptCode code = RewriteCode(lines, 1, mistakes);
  CheckLines(mistakes, lines.size());
  const auto count = static_cast<size_t>(std::count(code.text.begin(), code.text.end(), '\n'));
  if (count != lines.size()) Fail("the rewritten code has another number of lines");
}

void TrySteps(std::string_view bytes) {
  const std::vector<std::string> lines = SourceLines(bytes);
  Mistakes mistakes;
  ReadUserScript(lines, mistakes);
  CheckLines(mistakes, lines.size());
}

void TryCompanion(std::string_view bytes) {
  for (uint32_t offset = 0; offset < bytes.size() && offset < 64; ++offset) {
    const auto picture = PictureAt(bytes, offset);
    if (picture && picture->size() > bytes.size()) Fail("a picture larger than its file");
    TextAt(bytes, offset);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  // Code as Visual Basic users write it is short; what grows with the square of it must not rule.
  const std::string_view choice = bytes.substr(0, 600);
  TryForm(bytes);
  TryForm(Assembled(kFormParts, choice));
  TryForm("VERSION 5.00\nBegin VB.Form F\n" + Assembled(kFormParts, choice));
  TryCode(bytes);
  TryCode("\xEF\xBB\xBF" + Assembled(kCodeParts, choice));
  TrySteps(bytes);
  TrySteps(Assembled(kStepParts, choice));
  TryCompanion(bytes);
  return 0;
}
