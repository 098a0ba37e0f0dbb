// qrnform: runs form files.
#include <fcntl.h>
#include <io.h>
#include <ole2.h>
#include <shellapi.h>
#include <windows.h>

#include <cstdio>
#include <exception>

#include "com/Handles.h"
#include "host/container/Text.h"
#include "host/form/SourceText.h"
#include "host/runner/Program.h"
#include "host/user/UserPlayer.h"
#include "tools/qrnform/NewFormOptions.h"
#include "tools/qrnform/Options.h"

namespace {

using namespace qrn;
using qrnform::Options;

enum ExitCode { kDone = 0, kFailed = 1, kRefused = 2 };

class Apartment {
 public:
  Apartment() { com::Check(OleInitialize(nullptr)); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
  ~Apartment() { OleUninitialize(); }
};

std::vector<std::string> Arguments() {
  int count = 0;
  const com::Held<LPWSTR*, &LocalFree> list(CommandLineToArgvW(GetCommandLineW(), &count));
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(host::Utf8(list.get()[i]));
  return arguments;
}

// Scripts are UTF-8, with or without a byte order mark.
std::string ReadScript(const std::string& path) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  std::string bytes = form::ReadWholeFile(path);
  return bytes.starts_with(kByteOrderMark) ? bytes : std::string(kByteOrderMark) + bytes;
}

std::vector<form::UserStep> StepsOf(const Options& options) {
  std::vector<form::UserStep> steps;
  if (!options.script.empty()) {
    form::Mistakes mistakes;
    steps = form::ReadUserScript(form::SourceLines(ReadScript(options.script)), mistakes);
    if (mistakes.Any()) throw form::FileRefused(options.script, mistakes);
  }
  if (!options.shot.empty()) {
    form::UserStep shot;
    shot.verb = form::UserVerb::Shot;
    shot.arguments["file"] = options.shot;
    steps.push_back(std::move(shot));
  }
  return steps;
}

void TellFailure(const host::UserPlayer& player) {
  if (!player.failure().empty()) fprintf(stderr, "%s\n", player.failure().c_str());
}

// A program that waits for somebody at the script's end ends here all the same.
void EndStuck(const host::UserPlayer& player) {
  TellFailure(player);
  fprintf(stderr, "qrnform: the program does not end\n");
  fflush(stderr);
  fflush(stdout);
  TerminateProcess(GetCurrentProcess(), kFailed);
}

void Play(host::UserPlayer& player, const std::function<void()>& load) {
  try {
    player.Run(load, [&player] { EndStuck(player); });
  } catch (...) {
    TellFailure(player);
    throw;
  }
  TellFailure(player);
}

int RunForms(const Options& options) {
  std::vector<form::UserStep> steps = StepsOf(options);
  host::ModuleClasses classes;
  host::Program program(classes, {false, options.boxes});
  const auto load = [&] {
    for (const std::string& module : options.modules) classes.AddModule(host::Wide(module));
    for (const std::string& path : options.forms) program.Add(host::ReadFormSource(path));
    program.AddNamed();
  };
  if (options.script.empty() && steps.empty()) {
    load();
    program.Start();
    program.Run();
    return program.faults() == 0 ? kDone : kFailed;
  }
  host::ProgramScene scene(program);
  host::UserPlayer player(scene, std::move(steps), options.script, options.trace);
  Play(player, load);
  return player.failure().empty() && program.faults() == 0 ? kDone : kFailed;
}

int DesignForm(const Options& options) {
  std::vector<form::UserStep> steps = StepsOf(options);
  host::ModuleClasses classes;
  designer::DesignWindow window(classes, {options.language, options.boxes});
  const auto load = [&] {
    for (const std::string& module : options.modules) classes.AddModule(host::Wide(module));
    window.Open(options.forms.empty() ? std::string() : options.forms.front());
  };
  if (options.script.empty() && steps.empty()) {
    load();
    window.Run();
    return kDone;
  }
  host::DesignerScene scene(window);
  host::UserPlayer player(scene, std::move(steps), options.script, options.trace);
  Play(player, load);
  return player.failure().empty() ? kDone : kFailed;
}

int MakeNewForm(const std::vector<std::string>& arguments) {
  int exitCode = kDone;
  const auto order = qrnform::ReadNewFormOptions(arguments, &exitCode);
  if (!order) return exitCode;
  const newform::OrderOutcome outcome = newform::CarryOut(*order);
  for (const std::string& message : outcome.messages) {
    fprintf(outcome.done ? stdout : stderr, "%s\n", message.c_str());
  }
  return outcome.done ? kDone : kRefused;
}

}  // namespace

int main() {
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
  int exitCode = kDone;
  const std::vector<std::string> arguments = Arguments();
  try {
    if (qrnform::AskForNewForm(arguments)) return MakeNewForm(arguments);
    const std::optional<Options> options = qrnform::ReadOptions(arguments, &exitCode);
    if (!options) return exitCode;
    const Apartment apartment;
    return options->design ? DesignForm(*options) : RunForms(*options);
  } catch (const host::ClassNotFound& error) {
    fprintf(stderr, "qrnform: %s\n", error.reason.c_str());
  } catch (const std::exception& error) {
    fprintf(stderr, "%s\n", error.what());
  } catch (const com::Failure& failure) {
    fprintf(stderr, "qrnform: the system failed with 0x%08lX\n",
            static_cast<unsigned long>(failure.code));
  }
  return kRefused;
}
