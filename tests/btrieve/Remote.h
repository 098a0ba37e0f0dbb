// A client in a process of its own: the worker program, called over pipes.
#pragma once

#include <sys/types.h>

#include "kit/Calls.h"

namespace btrieve::test {

class OtherProcess : public Client {
 public:
  // Starts the worker, which stands beside this program. `arguments` choose its task; without any
  // it serves calls.
  explicit OtherProcess(const std::vector<std::string>& arguments = {});
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
  // Keeps it from running, and lets it again.
  void Halt();
  void Resume();
  int Output() const { return fromWorker_; }

 private:
  pid_t process_ = -1;
  int toWorker_ = -1;
  int fromWorker_ = -1;
};

}  // namespace btrieve::test
