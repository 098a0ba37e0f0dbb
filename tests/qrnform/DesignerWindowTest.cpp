// The designer's window with somebody before it: mouse, keys, files, running.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>

#include "host/container/Text.h"
#include "host/form/SourceText.h"
#include "tests/qrnform/DesignerRun.h"

namespace qrn::tests {
namespace {

std::string Line(const char* property, int value) {
  return std::string("      ") + property + " = " + std::to_string(value) + "\r\n";
}

std::string Control(const std::string& kindAndName, int left, int top, int width, int height,
                    int tabIndex, const std::string& more = {}) {
  return "   Begin " + kindAndName + " \r\n" + Line("Height", height) + Line("Left", left) +
         Line("TabIndex", tabIndex) + Line("Top", top) + Line("Width", width) + more + "   End\r\n";
}

std::string Form(const std::string& controls, const std::string& code = {}) {
  return "VERSION 5.00\r\n"
         "Object = \"{0899ACE4-82FE-42E6-A344-54FA80006796}#1.0#0\"; \"qrnbt350.ocx\"\r\n"
         "Begin VB.Form frmCard \r\n   Caption = \"Card\"\r\n   ClientHeight = 4200\r\n"
         "   ClientWidth = 6000\r\n" +
         controls + "End\r\nAttribute VB_Name = \"frmCard\"\r\n" + code;
}

// Two text boxes and a frame with a button in it.
const std::string kCard = Form(Control("VB.TextBox txtA", 600, 600, 1200, 360, 0) +
                               Control("VB.TextBox txtB", 3000, 1200, 1200, 360, 1) +
                               Control("VB.Frame fra", 600, 1800, 2400, 1200, 2,
                                       Control("VB.CommandButton cmd", 240, 240, 960, 480, 3)));

struct ActionCase {
  const char* what;
  const char* script;
  const char* holds;  // lines that the saved file has, "|" between, by name and value alone
};

// `cmd.Left` and the like: what stands in the saved file.
std::string Value(const std::string& bytes, const std::string& name, const std::string& property) {
  size_t at = bytes.find(" " + name + " ");
  if (at == std::string::npos) return "no " + name;
  at = bytes.find(" " + property + " ", at);
  if (at == std::string::npos) return "none";
  at = bytes.find('=', at) + 1;
  return std::string(form::Trimmed(bytes.substr(at, bytes.find("\r\n", at) - at)));
}

std::string Values(const std::string& bytes, const std::string& asked) {
  std::string values;
  for (size_t at = 0; at < asked.size();) {
    const size_t end = std::min(asked.find('|', at), asked.size());
    const std::string path = asked.substr(at, asked.find('=', at) - at);
    const size_t dot = path.find('.');
    values += (values.empty() ? "" : "|") + path + "=" +
              Value(bytes, path.substr(0, dot), path.substr(dot + 1));
    at = end + 1;
  }
  return values;
}

const ActionCase kActions[] = {
    {"a drag moves", "click txtA\ndraw from 700 700 to 1300 700\n", "txtA.Left=1200|txtA.Top=600"},
    {"Ctrl drags beside the grid", "point 700 700\ndraw from 700 700 to 1045 760 ctrl\n",
     "txtA.Left=600"},
    {"a handle sizes", "click txtA\npull txtA right by 480 0\n", "txtA.Width=1680|txtA.Left=600"},
    {"the form's handle sizes the form", "point 5700 3900\npull frmCard bottomright by 600 300\n",
     "frmCard.ClientWidth=6600|frmCard.ClientHeight=4560"},
    {"a band and arrow keys",
     "draw from 300 300 to 3300 1500\nkey Ctrl+Right times 2\nkey Shift+Down\n",
     "txtA.Left=840|txtB.Left=3240|txtA.Height=480|cmd.Left=240"},
    {"the last that is clicked leads", "click txtB\nclick txtA ctrl\nkey Alt+O\nkey A\nkey L\n",
     "txtA.Left=600|txtB.Left=600"},
    {"Tab goes through the controls", "key Tab times 2\nkey Delete\n",
     "txtA.Left=600|txtB.Left=no txtB"},
    {"Tab backwards", "key Shift+Tab\nkey Delete\n", "cmd.Left=no cmd|fra.Left=600"},
    {"cut and paste into a frame", "click txtA\nkey Ctrl+X\npoint 2700 2700\nkey Ctrl+V\n",
     "txtA.Left=600|txtB.Left=3000"},
    {"the order of the Tab key by clicks", "key Ctrl+D\nclick cmd\nclick txtB\nkey Enter\n",
     "cmd.TabIndex=0|txtB.TabIndex=1|txtA.TabIndex=2|fra.TabIndex=3"},
    {"it is taken back", "key Ctrl+D\nclick cmd\nclick txtB\nkey Escape\n",
     "cmd.TabIndex=3|txtA.TabIndex=0"},
    {"Escape ends a drag", "tool CommandButton\nkey Escape\ndraw from 700 700 to 1300 700\n",
     "txtA.Left=1200|Command1.Left=no Command1"},
    {"a tool draws in a frame", "tool CommandButton\ndraw from 1800 2040 to 2760 2520\n",
     "Command1.Left=1200|Command1.Width=960|Command1.Height=480"},
    {"a tool that is pressed twice", "tool TextBox twice\n", "Text1.Left=2400|Text1.Height=495"},
    {"undo and redo",
     "click txtA\nkey Ctrl+Right\nkey Tab\nkey Ctrl+Down\nkey Ctrl+Z times 2\nkey Ctrl+Y\n",
     "txtA.Left=720|txtB.Top=1200"},
    {"the context menu", "click txtA right\nkey D\n", "txtA.Left=no txtA|txtB.Left=3000"},
};

TEST(DesignerWindow, DoesWhatMouseAndKeysSay) {
  for (const ActionCase& given : kActions) {
    DesignerRun run(kCard);
    EXPECT_EQ(run.Play(std::string(given.script) + "key Ctrl+S\nclose\n"), "") << given.what;
    EXPECT_EQ(Values(run.Bytes(), given.holds), given.holds) << given.what;
  }
}

// What is drawn is saved as a new form, which runs and comes back.
TEST(DesignerWindow, DrawsSavesAndRunsANewForm) {
  DesignerRun run;
  EXPECT_EQ(run.Play("tool QRNEdit\ndraw from 600 600 to 2400 960\n"
                     "tool Label\ndraw from 600 1200 to 2400 1560\n"
                     "tool CommandButton\ndraw from 600 1800 to 1800 2280\n"
                     "key Ctrl+S\n"
                     "dialog \"名前を付けて保存\" enter 1148 \"@form.frm\"\n"
                     "dialog \"名前を付けて保存\" press \"OK\"\n"
                     "wait 300\n"
                     "key F5\n"
                     "wait until QRNEdit1.Visible = True\n"
                     "type \"abc\"\nprint QRNEdit1.Text\nprint Command1.Left\n"
                     "close\nwait 300\n"
                     "click Command1\nkey Delete\nkey Ctrl+S\nclose\n"),
            "");
  EXPECT_EQ(run.printed(), "abc\n600\n");
  const char* kSaved =
      "QRNEdit1.Left=600|QRNEdit1.Width=1800|Label1.Top=1200|Command1.Left=no Command1";
  EXPECT_EQ(Values(run.Bytes(), kSaved), kSaved);
}

TEST(DesignerWindow, WorksByKeysAlone) {
  DesignerRun run(kCard);
  EXPECT_EQ(run.Play("key Alt+V\nkey X\nkey Right\nkey Enter\n"  // a label, in the middle
                     "key Shift+Right\nkey Ctrl+Down\n"
                     "key Alt+F\nkey S\nkey Alt+Q\n"),
            "");
  const char* kMade = "Label1.Left=2400|Label1.Top=1920|Label1.Width=1335";
  EXPECT_EQ(Values(run.Bytes(), kMade), kMade);
}

struct LeaveCase {
  const char* button;
  bool saved;
  const char* rest;  // what is to be done afterwards
};

const LeaveCase kLeaves[] = {
    {"Yes", true, ""}, {"No", false, ""}, {"Cancel", false, "key Ctrl+Z\nclose\n"}};

TEST(DesignerWindow, AsksBeforeChangesAreLost) {
  for (const LeaveCase& given : kLeaves) {
    DesignerRun run(kCard);
    EXPECT_EQ(run.Play(std::string("click txtA\nkey Ctrl+Right\nclose\n"
                                   "message \"Save the changes to form.frm?\" ") +
                       given.button + "\n" + given.rest),
              "");
    EXPECT_EQ(run.Bytes() != kCard, given.saved) << given.button;
  }
}

TEST(DesignerWindow, GivesBackTheBytesWhenAllIsUndone) {
  DesignerRun run(kCard);
  EXPECT_EQ(run.Play("click txtA\nkey Ctrl+Right\ntool QRNGrid\ndraw from 3600 1800 to 5400 3600\n"
                     "click fra at 10 30\nkey Delete\nkey Ctrl+Z times 3\n"
                     "click txtB\nkey Ctrl+S\nclose\n"),
            "");
  EXPECT_EQ(run.Bytes(), kCard);
}

// A double click on a button leads into its handler; what is typed there runs and is saved.
TEST(DesignerWindow, RunsTheCodeThatWasTyped) {
  DesignerRun run(kCard);
  EXPECT_EQ(run.Play("dblclick cmd\ntype \"Print txtA.Left\"\nkey Shift+F7\n"
                     "key F5\nclick cmd\nclose\nwait 300\nkey Ctrl+S\nclose\n"),
            "");
  EXPECT_EQ(run.printed(), " 600 \n");
  EXPECT_NE(run.Bytes().find("Private Sub cmd_Click()\r\n"), std::string::npos) << run.Bytes();
}

// A class that nobody has: its control is shown as a box, moved and kept.
TEST(DesignerWindow, KeepsWhatItDoesNotKnow) {
  const std::string thing =
      Control("NoLib.Thing thg", 600, 600, 1200, 960, 0, "      Colour = 3\r\n");
  DesignerRun run(Form(thing));
  EXPECT_EQ(run.Play("click thg\nkey Ctrl+Right\nkey Ctrl+S\nclose\n"), "");
  const char* kKept = "thg.Left=720|thg.Colour=3";
  EXPECT_EQ(Values(run.Bytes(), kKept), kKept);
}

// The box stands in front of the window, both with the form's name.
std::string Told(const std::string& words) {
  const std::string box = "dialog \"form.frm - Form Designer\" ";
  std::string steps;
  for (size_t at = 0; at < words.size();) {
    const size_t end = std::min(words.find('|', at), words.size());
    steps += box + "expect 65535 contains \"" + words.substr(at, end - at) + "\"\n";
    at = end + 1;
  }
  return steps + box + "press \"OK\"\n";
}

TEST(DesignerWindow, TellsWhyAFileCannotBeSaved) {
  DesignerRun run(kCard);
  const std::wstring path = host::Wide(run.PathOf("form.frm"));
  SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(run.Play("click txtA\nkey Ctrl+Right\nkey Ctrl+S\n" +
                     Told("The form cannot be saved.|form.frm") +
                     "close\nmessage \"Save the changes to form.frm?\" No\n"),
            "");
  SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
  EXPECT_EQ(run.Bytes(), kCard);
}

// Code that fails while it runs: after the form's end the caret stands at its line.
TEST(DesignerWindow, GoesToTheLineThatFailed) {
  DesignerRun run(Form(Control("VB.CommandButton cmd", 600, 600, 1200, 480, 0),
                       "Private Sub cmd_Click()\r\n  Dim n\r\n  n = 1 / 0\r\nEnd Sub\r\n"));
  EXPECT_EQ(run.Play("key F5\nclick cmd\nclose\nwait 300\ntype \"here\"\nkey Ctrl+S\nclose\n"), "");
  EXPECT_NE(run.Bytes().find("  heren = 1 / 0\r\n"), std::string::npos) << run.Bytes();
}

// Code that cannot run is told with its line, and the designer is there again.
TEST(DesignerWindow, TellsWhatKeepsTheFormFromRunning) {
  DesignerRun run(
      Form("", "Private Sub Form_Load()\r\n  Open \"x\" For Input As #1\r\nEnd Sub\r\n"));
  EXPECT_EQ(run.Play("key F5\n" + Told("The form cannot be run.|form.frm:10:") +
                     "tool Label twice\nkey Ctrl+S\nclose\n"),
            "");
  EXPECT_EQ(Value(run.Bytes(), "Label1", "TabIndex"), "0");
}

}  // namespace
}  // namespace qrn::tests
