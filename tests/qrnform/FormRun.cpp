#include "tests/qrnform/FormRun.h"

#include <ole2.h>
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "host/container/Text.h"
#include "host/form/SourceText.h"
#include "host/runner/Program.h"
#include "host/user/UserPlayer.h"

namespace qrn::tests {
namespace {

constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";

class Apartment {
 public:
  Apartment() { OleInitialize(nullptr); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
  ~Apartment() { OleUninitialize(); }
};

// A folder that goes with its content.
class Folder {
 public:
  Folder() : path_(std::filesystem::temp_directory_path() / Unique()) {
    std::filesystem::create_directories(path_);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  std::string Write(const std::string& name, const std::string& text) const {
    const std::filesystem::path file = path_ / name;
    std::ofstream(file, std::ios::binary) << kByteOrderMark << text;
    return file.string();
  }

 private:
  static std::string Unique() {
    static int count = 0;
    return "qrnform-test-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++count);
  }
  std::filesystem::path path_;
};

std::wstring ModuleBeside() {
  wchar_t path[MAX_PATH] = L"";
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return std::filesystem::path(path).replace_filename(L"qrnbt350.ocx").wstring();
}

// Mistakes without the folder that the forms stand in.
std::string WithoutFolder(std::string text, const std::string& file) {
  const std::string folder = file.substr(0, file.find_last_of("\\/") + 1);
  for (size_t at = text.find(folder); at != std::string::npos; at = text.find(folder)) {
    text.erase(at, folder.size());
  }
  return text;
}

std::vector<form::UserStep> StepsOf(const std::string& script) {
  form::Mistakes mistakes;
  auto steps = form::ReadUserScript(form::SourceLines(kByteOrderMark + script), mistakes);
  if (mistakes.Any()) throw form::FileRefused("script", mistakes);
  return steps;
}

void Play(const RunRequest& request, const std::vector<std::string>& files, RunResult* result) {
  host::ModuleClasses classes;
  host::Program program(classes, {request.design, false});
  program.SetPrinter([result](const std::string& text) { result->printed += text; });
  program.SetTeller([result](const std::string& text) { result->told += text + "\n"; });
  host::UserPlayer player(program, StepsOf(request.script), "script", false);
  player.Run([&] {
    classes.AddModule(ModuleBeside());
    for (const std::string& file : files) program.Add(host::ReadFormSource(file));
  });
  result->failure = player.failure();
  result->faults = program.faults();
}

}  // namespace

RunResult RunForms(const RunRequest& request) {
  const Folder folder;
  std::vector<std::string> files;
  for (const std::string& text : request.forms) {
    files.push_back(folder.Write("form" + std::to_string(files.size() + 1) + ".frm", text));
  }
  RunResult result;
  const Apartment apartment;
  try {
    Play(request, files, &result);
  } catch (const std::exception& error) {
    result.failure = WithoutFolder(error.what(), files[0]);
  } catch (const host::ClassNotFound& error) {
    result.failure = error.reason;
  }
  result.told = WithoutFolder(result.told, files[0]);
  result.left = host::liveObjects;
  return result;
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
