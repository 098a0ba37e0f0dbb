// A client in a process of its own: the worker program, called over pipes.
#pragma once

#include <sys/types.h>

#include "kit/Calls.h"

namespace btrieve::test {

class OtherProcess : public Client {
 public:
  // Starts the worker, which stands beside this program, or another one with arguments of its own
  // before the worker's. These name its task, and what belongs to it.
  explicit OtherProcess(const std::vector<std::string>& arguments = {"serve"},
                        const std::vector<std::string>& program = {});
  // Ends it, as a process that dies, and waits until it has gone.
  ~OtherProcess() override;
  OtherProcess(const OtherProcess&) = delete;
  OtherProcess& operator=(const OtherProcess&) = delete;

  // A call that the worker did not answer has status -1.
  CallOut Call(int operation, int block, const CallIn& in) override;
  // The two halves of a call, to do something else while it waits.
  void Begin(int operation, int block, const CallIn& in);
  CallOut Finish();

  // Whether Finish would not wait.
  bool IsAnswered() const;

  void Kill();
  // Waits until it has gone, and tells how: "signal 9", "code 1", with the program's name.
  std::string Ending();
  // Keeps it from running, and lets it again.
  void Halt();
  void Resume();
  // Waits until it stands still by itself, true, or has gone.
  bool AwaitHalt();
  // What it writes comes out here, and what goes in here is its input.
  int Output() const { return fromWorker_; }
  int Input() const { return toWorker_; }
  void CloseInput();

 private:
  std::string program_;
  pid_t process_ = -1;
  int toWorker_ = -1;
  int fromWorker_ = -1;
};

}  // namespace btrieve::test
