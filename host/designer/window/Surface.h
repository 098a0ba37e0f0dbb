// The surface in the middle of the designer's window: the form, live, with what is selected on it;
// mouse and keys that select, move, size and draw.
#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/designer/model/Gesture.h"
#include "host/designer/window/LiveForm.h"
#include "host/designer/window/Marks.h"
#include "host/designer/window/Scroller.h"

namespace qrn::designer {

class SurfaceOwner {
 public:
  virtual ~SurfaceOwner() = default;
  virtual void Tell(const Refusal& refusal) = 0;
  // The form cannot be shown, for this reason (UTF-8).
  virtual void OnCannotShow(const std::string& reason) = 0;
  // A double click, or Enter.
  virtual void OpenCode(ControlId control) = 0;
  virtual void ShowPages(ControlId control) = 0;
  virtual void OnContextMenu(POINT screen) = 0;
  // The tool was used, or was put away.
  virtual void OnToolDone() = 0;
  // The order of the Tab key is being clicked, or no longer is.
  virtual void OnTabOrder(bool clicking) = 0;
};

class Surface final : private host::DesignStage {
 public:
  Surface(HWND parent, SurfaceOwner& owner, host::ControlClasses& classes, HFONT font);
  Surface(const Surface&) = delete;
  Surface& operator=(const Surface&) = delete;
  ~Surface() override;

  // Another form: `path` is where its file is or would be. The design outlives what is shown.
  void Open(Design& design, const std::string& path);
  // The form's file lies elsewhere now.
  void MoveTo(const std::string& path);
  void OnChange(const ChangeReport& report);

  HWND Window() const noexcept override { return window_; }
  // Null while no form is shown.
  host::Program* program() const noexcept { return live_.program(); }
  host::FormControl* Live(ControlId control) const;
  Grid& grid() noexcept { return grid_; }
  bool gridIsShown() const noexcept { return gridIsShown_; }
  void ShowGrid(bool shown);

  // What the next press draws with; nothing: it selects.
  void TakeTool(std::optional<Tool> tool);
  void PutInMiddle(const Tool& tool);
  // Numbers are shown on the controls, to be clicked in turn.
  void BeginTabOrder();
  bool IsInTabOrder() const noexcept { return clicked_.has_value(); }

  // A message for the form or something on it: none of these reaches a control. True if it goes no
  // further.
  bool PreTranslate(const MSG& message);

  // On the screen.
  POINT ScreenPoint(Point onForm) const;
  RECT ScreenPlace(ControlId control) const;
  std::optional<POINT> ScreenHandle(ControlId control, Handle handle) const;

 private:
  struct MessageRow;
  static const MessageRow kMessages[];

  void DrawGround(HDC dc, const RECT& area) const noexcept override;
  void SetPointer() noexcept override;
  void ShowPages(host::FormControl& control) override;

  void ShowForm();
  void Arrange();
  void ShowMarks();
  std::vector<Mark> SelectionMarks() const;
  std::vector<Mark> NumberMarks() const;
  void Reveal();

  Point OnForm(POINT screen) const;
  std::optional<Handle> FormHandleAt(POINT screen) const;
  bool IsTwice(POINT screen);
  void OnPress(POINT screen);
  void OnMove(POINT screen);
  void OnRelease();
  void OnRightPress(POINT screen);
  void CancelGesture();
  void ClickTabOrder(ControlId control);
  void EndTabOrder(bool keep);
  bool OnMouse(UINT message, WPARAM wParam, POINT screen);
  bool OnKey(WPARAM key);
  bool OnArrow(WPARAM key);
  void OnEscape();
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  SurfaceOwner& owner_;
  HFONT font_;
  HWND window_ = nullptr;
  LiveForm live_;
  std::unique_ptr<Marks> outer_;  // over the surface: the form's own handles
  std::unique_ptr<Marks> inner_;  // over the form
  Design* design_ = nullptr;
  std::string path_;
  Grid grid_;
  bool gridIsShown_ = true;
  std::optional<Scroller> scroller_;
  std::optional<Tool> tool_;
  std::optional<Gesture> gesture_;
  std::optional<std::vector<ControlId>> clicked_;  // in the order of the Tab key, while it is asked
  DWORD pressedAt_ = 0;                            // milliseconds; of the last press
  POINT pressed_{};
};

}  // namespace qrn::designer
