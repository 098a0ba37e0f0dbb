// Work that another thread has done on the thread of the forms, whatever loop runs there: a message
// box's too.
#pragma once

#include <windows.h>

#include <functional>

namespace qrn::host {

// Made and destroyed on the thread of the forms.
class UiThread {
 public:
  UiThread();
  UiThread(const UiThread&) = delete;
  UiThread& operator=(const UiThread&) = delete;
  ~UiThread();

  // Runs `work` there and waits for it. False if the thread does not come to it within
  // `milliseconds`; the work is not run then. An exception of the work comes back to the caller.
  bool Run(const std::function<void()>& work, unsigned milliseconds = 30000);

  // Waits until the thread has nothing to read any more: input, posted messages, paintings.
  void WaitIdle();

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  HWND window_ = nullptr;
};

}  // namespace qrn::host
