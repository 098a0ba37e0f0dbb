// Work that another thread has done on the thread of the forms, whatever loop runs there: a message
// box's too.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <vector>

namespace qrn::host {

// Made and destroyed on the thread of the forms; everything else is for one other thread.
class UiThread {
 public:
  enum class Outcome {
    Done,
    Left,     // still runs there; it is no longer waited for
    Refused,  // the thread did not come to it and it will not be run
  };

  UiThread();
  UiThread(const UiThread&) = delete;
  UiThread& operator=(const UiThread&) = delete;
  ~UiThread();

  // Runs `work` there and waits for it until `leave` gives true or `milliseconds` are over. An
  // exception of the work comes back to the caller. Work that is left behind may run for long: it
  // must own what it uses.
  Outcome Run(std::function<void()> work, const std::function<bool()>& leave = {},
              unsigned milliseconds = 30000);

  // Throws what work that was left behind has failed with since.
  void ThrowLateFailure();

  // Waits until the thread has nothing to read any more: input, posted messages, paintings; no
  // longer once `over` gives true, for then nobody reads.
  void WaitIdle(const std::function<bool()>& over = {});

  // The window that has the keyboard there; null while the user is somewhere else.
  HWND Focus() const noexcept;

 private:
  struct Work;

  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  void Hand(const std::shared_ptr<Work>& work) const;

  HWND window_ = nullptr;
  std::vector<std::shared_ptr<Work>> left_;
};

}  // namespace qrn::host
