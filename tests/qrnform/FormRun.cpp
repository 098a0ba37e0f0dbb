#include "tests/qrnform/FormRun.h"

#include <gtest/gtest.h>
#include <ole2.h>
#include <windows.h>

#include <fstream>
#include <sstream>

#include "host/container/Text.h"
#include "host/form/SourceText.h"
#include "host/runner/Program.h"
#include "host/user/UserPlayer.h"
#include "tests/qrnform/PlayedScript.h"
#include "tests/support/TempFolder.h"

namespace qrn::tests {
namespace {

// Mistakes without the folder that the forms stand in.
std::string WithoutFolder(std::string text, const std::string& file) {
  const std::string folder = file.substr(0, file.find_last_of("\\/") + 1);
  for (size_t at = text.find(folder); at != std::string::npos; at = text.find(folder)) {
    text.erase(at, folder.size());
  }
  return text;
}

}  // namespace

// Form files in a folder of their own, by their paths.
struct FormFiles {
  explicit FormFiles(const std::vector<std::string>& texts, const std::string& companion = {}) {
    for (const std::string& text : texts) {
      paths.push_back(folder.Path("form" + std::to_string(paths.size() + 1) + ".frm"));
      std::ofstream(paths.back(), std::ios::binary) << kByteOrderMark << text;
    }
    if (!companion.empty()) {
      std::ofstream(folder.Path("form1.frx"), std::ios::binary) << companion;
    }
  }
  void GiveTo(host::ModuleClasses& classes, host::Program& program, size_t given = 100) const {
    classes.AddModule(ModuleBeside());
    for (size_t i = 0; i < paths.size() && i < given; ++i) {
      program.Add(host::ReadFormSource(paths[i]));
    }
    program.AddNamed();
  }

  test::TempFolder folder;
  std::vector<std::string> paths;
};

namespace {

void Play(const RunRequest& request, const FormFiles& files, RunResult* result) {
  host::ModuleClasses classes;
  host::Program program(classes, {request.design, false});
  program.SetPrinter([result](const std::string& text) { result->printed += text; });
  program.SetTeller([result](const std::string& text) { result->told += text + "\n"; });
  host::ProgramScene scene(program);
  host::UserPlayer player(scene, StepsOf(request.script), "script", false);
  player.Run([&] { files.GiveTo(classes, program, request.given); });
  result->failure = player.failure();
  result->faults = program.faults();
}

}  // namespace

RunResult RunForms(const RunRequest& request) {
  const FormFiles files(request.forms, request.companion);
  RunResult result;
  const Apartment apartment;
  try {
    Play(request, files, &result);
  } catch (const std::exception& error) {
    result.failure = WithoutFolder(error.what(), files.paths[0]);
  } catch (const host::ClassNotFound& error) {
    result.failure = error.reason;
  }
  result.told = WithoutFolder(result.told, files.paths[0]);
  result.left = host::liveObjects;
  return result;
}

void ExpectForm(const FormCase& given) {
  const RunResult result = RunForms({{FormText(given.controls, given.code)}, given.script});
  EXPECT_EQ(result.failure, "") << given.name;
  EXPECT_EQ(result.printed, given.printed) << given.name;
  EXPECT_EQ(result.faults, 0) << given.name << ": " << result.told;
  EXPECT_EQ(result.left, 0) << given.name;
}

struct OpenForms::Parts {
  Parts(const std::vector<std::string>& forms, bool design)
      : files(forms), program(classes, {design, false}) {
    files.GiveTo(classes, program);
    program.Start();
  }

  FormFiles files;
  Apartment apartment;
  host::ModuleClasses classes;
  host::Program program;
};

OpenForms::OpenForms(const std::vector<std::string>& forms, bool design)
    : parts_(std::make_unique<Parts>(forms, design)) {}

OpenForms::~OpenForms() = default;

host::Form& OpenForms::first() const { return *parts_->program.forms().front(); }

namespace {

std::string PieceLines(const std::string& kindAndName, int place, int width, int height,
                       const std::string& more) {
  std::ostringstream text;
  text << "Begin " << kindAndName << "\n Left = 100\n Top = " << 100 + 600 * place
       << "\n Width = " << width << "\n Height = " << height << "\n TabIndex = " << place << "\n"
       << more << "End\n";
  return text.str();
}

}  // namespace

std::string Piece(const std::string& kindAndName, int place, const std::string& more) {
  return PieceLines(kindAndName, place, 2000, 400, more);
}

std::string Edit(const std::string& name, int place, const std::string& more) {
  return Piece("QRNBTRLib.QRNEdit " + name, place, more);
}

std::string Holder(const std::string& kindAndName, int place, const std::string& content) {
  return PieceLines(kindAndName, place, 4000, 1600, content);
}

std::string FormText(const std::string& controls, const std::string& code,
                     const std::string& name) {
  std::ostringstream text;
  text << "VERSION 5.00\n"
          "Object = \"{0899ACE4-82FE-42E6-A344-54FA80006796}#1.0#0\"; \"qrnbt350.ocx\"\n"
          "Begin VB.Form "
       << name
       << "\n   Caption = \"試験\"\n   ClientHeight = 4500\n   ClientWidth = 6000\n"
          "   StartUpPosition = 2\n"
       << controls << "End\nAttribute VB_Name = \"" << name << "\"\n"
       << code;
  return text.str();
}

}  // namespace qrn::tests
