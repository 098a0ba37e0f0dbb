// A form's window: made as the form's look says, shown, moved, closed. What comes to it goes to its
// owner.
#pragma once

#include <windows.h>

#include <optional>
#include <vector>

#include "host/container/InPlaceFrame.h"
#include "host/runner/FormLook.h"

namespace qrn::host {

class FormWindowOwner {
 public:
  virtual ~FormWindowOwner() = default;
  // A message of the window. Without a result the system answers it. Exceptions end here: the
  // answer is 0 then.
  virtual std::optional<LRESULT> OnWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;
  // What keeps the owner, and the window with it, while a message is answered.
  virtual Com<IUnknown> Life() = 0;
};

// Places are pixels of the screen, title bar and borders included. Everything but Make may be asked
// while there is no window: it does nothing then.
class FormWindow {
 public:
  explicit FormWindow(FormWindowOwner& owner) noexcept : owner_(owner) {}
  FormWindow(const FormWindow&) = delete;
  FormWindow& operator=(const FormWindow&) = delete;
  ~FormWindow();  // whose owner hears nothing of the window's end

  // Makes the window, still hidden, as a child of `parent` if there is one; throws
  // std::runtime_error when the system refuses.
  void Make(const FormLook& look, HWND parent = nullptr);
  void Close() noexcept;

  HWND get() const noexcept { return window_; }  // null while there is none
  // What controls take for the frame they are active in; empty while there is no window.
  const Com<InPlaceFrame>& frame() const noexcept { return frame_; }

  // Shows it as WindowState says (0 as it was, 1 minimized, 2 maximized) and brings it in front,
  // but for a minimized one.
  void Show(int windowState) noexcept;
  void Hide() noexcept;
  RECT Place() const noexcept;
  void MoveTo(const RECT& place) noexcept;
  void Repaint() noexcept;

  // Keeps these windows from the user until EndModal; those that are disabled already stay so.
  void BeModal(const std::vector<HWND>& others);
  // Hiding and closing are the end of it too: before the window goes, so that the system gives the
  // keyboard back to who had it.
  void EndModal() noexcept;
  bool IsModal() const noexcept { return modal_; }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  FormWindowOwner& owner_;
  HWND window_ = nullptr;
  Com<InPlaceFrame> frame_;
  bool modal_ = false;
  std::vector<HWND> waiting_;  // kept from the user meanwhile
};

}  // namespace qrn::host
