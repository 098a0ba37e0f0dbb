#include "ScriptHost.h"

#include <windows.h>

#include <filesystem>
#include <fstream>

#include "com/Handles.h"
#include "platform/CodePage.h"
#include "platform/Utf.h"
#include "tests/support/Pinned.h"

namespace qrn::test {
namespace {

namespace fs = std::filesystem;

constexpr int kBoxText = 0xFFFF;
constexpr DWORD kMostMilliseconds = 60000;
constexpr DWORD kLookMilliseconds = 20;

// A file that goes at the end of the scope.
class ScratchFile : Pinned {
 public:
  explicit ScratchFile(const char* ending)
      : path_(fs::temp_directory_path() /
              ("qrn_script_" + std::to_string(GetCurrentProcessId()) + ending)) {}
  ~ScratchFile() {
    std::error_code ignored;
    fs::remove(path_, ignored);
  }
  const fs::path& path() const { return path_; }

 private:
  fs::path path_;
};

struct Search {
  DWORD process;
  HWND box;
};

BOOL CALLBACK NoteBox(HWND window, LPARAM to) {
  auto& search = *reinterpret_cast<Search*>(to);
  wchar_t name[16] = {};
  DWORD process = 0;
  GetClassNameW(window, name, 16);
  GetWindowThreadProcessId(window, &process);
  const bool box = process == search.process && wcscmp(name, L"#32770") == 0;
  if (!box || !IsWindowVisible(window)) return TRUE;
  search.box = window;
  return FALSE;
}

// Answers the process's message box if it shows one; gives what that said.
std::string AnswerBox(DWORD process) {
  Search search{process, nullptr};
  EnumWindows(&NoteBox, reinterpret_cast<LPARAM>(&search));
  if (!search.box) return {};
  wchar_t text[512] = {};
  GetDlgItemTextW(search.box, kBoxText, text, 512);
  PostMessageW(search.box, WM_COMMAND, IDOK, 0);
  for (int i = 0; i < 500 && IsWindow(search.box) && IsWindowVisible(search.box); ++i) Sleep(2);
  return Utf16ToUtf8(reinterpret_cast<const char16_t*>(text)) + "; ";
}

std::string WaitForEnd(const PROCESS_INFORMATION& process) {
  std::string boxes;
  const ULONGLONG end = GetTickCount64() + kMostMilliseconds;
  while (WaitForSingleObject(process.hProcess, kLookMilliseconds) != WAIT_OBJECT_0) {
    boxes += AnswerBox(process.dwProcessId);
    if (GetTickCount64() > end) TerminateProcess(process.hProcess, 1);
  }
  return boxes;
}

std::string RunHost(const fs::path& script, const fs::path& output) {
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  const HANDLE file = CreateFileW(output.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited,
                                  CREATE_ALWAYS, 0, nullptr);
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdOutput = start.hStdError = file;
  PROCESS_INFORMATION process{};
  std::wstring command = L"cscript.exe //nologo \"" + script.wstring() + L"\"";
  std::string boxes = "the script host does not start; ";
  if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                     &process)) {
    boxes = WaitForEnd(process);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
  }
  CloseHandle(file);
  return boxes;
}

}  // namespace

ScriptRun RunInScriptHost(const std::string& text) {
  const ScratchFile script(".vbs"), output(".txt");
  std::ofstream(script.path(), std::ios::binary) << Utf8ToCodePage(text);
  ScriptRun run;
  run.boxes = RunHost(script.path(), output.path());
  std::ifstream file(output.path(), std::ios::binary);
  std::string printed(std::istreambuf_iterator<char>(file), {});
  std::erase(printed, '\r');
  run.printed = CodePageToUtf8(printed);
  return run;
}

}  // namespace qrn::test
