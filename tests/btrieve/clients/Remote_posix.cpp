#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

#include "clients/Remote.h"
#include "kit/Wire.h"

namespace btrieve::test {
namespace {

std::string WorkerPath() {
  return (std::filesystem::read_symlink("/proc/self/exe").parent_path() / "btrieve_worker")
      .string();
}

// Ends of a pipe that no other child inherits.
struct Pipe {
  int read = -1;
  int write = -1;

  Pipe() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    read = ends[0];
    write = ends[1];
  }
};

std::vector<char*> PointersTo(std::vector<std::string>& arguments) {
  std::vector<char*> pointers;
  pointers.reserve(arguments.size() + 1);
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  return pointers;
}

// Without a copy of this process's tables of pages, which the sanitizers make large.
pid_t Start(char* const* arguments, int input, int output) {
  posix_spawn_file_actions_t ends;
  posix_spawn_file_actions_init(&ends);
  posix_spawn_file_actions_adddup2(&ends, input, STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&ends, output, STDOUT_FILENO);
  pid_t process = -1;
  const int error = posix_spawn(&process, arguments[0], &ends, nullptr, arguments, environ);
  posix_spawn_file_actions_destroy(&ends);
  if (error != 0) throw std::runtime_error(std::string("no process ") + arguments[0]);
  return process;
}

}  // namespace

OtherProcess::OtherProcess(const std::vector<std::string>& arguments,
                           const std::vector<std::string>& program) {
  signal(SIGPIPE, SIG_IGN);
  std::vector<std::string> words = program.empty() ? std::vector{WorkerPath()} : program;
  words.insert(words.end(), arguments.begin(), arguments.end());
  program_ = words[0];
  const std::vector<char*> pointers = PointersTo(words);
  const Pipe input;
  const Pipe output;
  process_ = Start(pointers.data(), input.read, output.write);
  close(input.read);
  close(output.write);
  toWorker_ = input.write;
  fromWorker_ = output.read;
}

OtherProcess::~OtherProcess() {
  Kill();
  CloseInput();
  close(fromWorker_);
}

void OtherProcess::CloseInput() {
  if (toWorker_ >= 0) close(toWorker_);
  toWorker_ = -1;
}

void OtherProcess::Kill() {
  if (process_ <= 0) return;
  kill(process_, SIGKILL);
  waitpid(process_, nullptr, 0);
  process_ = -1;
}

std::string OtherProcess::Ending() {
  int how = 0;
  if (process_ <= 0 || waitpid(process_, &how, 0) != process_) return program_ + " was ended";
  process_ = -1;
  return program_ + (WIFSIGNALED(how) ? " by signal " + std::to_string(WTERMSIG(how))
                                      : " with code " + std::to_string(WEXITSTATUS(how)));
}

void OtherProcess::Halt() { kill(process_, SIGSTOP); }
void OtherProcess::Resume() { kill(process_, SIGCONT); }

bool OtherProcess::AwaitHalt() {
  int how = 0;
  waitpid(process_, &how, WUNTRACED);
  if (WIFSTOPPED(how)) return true;
  process_ = -1;
  return false;
}

bool OtherProcess::IsAnswered() const {
  pollfd look{fromWorker_, POLLIN, 0};
  return poll(&look, 1, 0) > 0;
}

void OtherProcess::Begin(int operation, int block, const CallIn& in) {
  SendMessage(toWorker_, ToWire(RemoteCall{operation, block, in}));
}

CallOut OtherProcess::Finish() {
  const auto answer = ReceiveMessage(fromWorker_);
  if (answer) return OutFromWire(*answer);
  CallOut gone;
  gone.status = -1;
  return gone;
}

CallOut OtherProcess::Call(int operation, int block, const CallIn& in) {
  Begin(operation, block, in);
  return Finish();
}

}  // namespace btrieve::test
