// The form itself, as the runner shows it, while it is designed: real controls that draw
// themselves, at design time, made from the design as it stands.
#pragma once

#include <memory>
#include <string>

#include "host/designer/model/Design.h"
#include "host/runner/Program.h"

namespace qrn::designer {

class LiveForm {
 public:
  // Both outlive it.
  LiveForm(host::ControlClasses& classes, host::DesignStage& stage);
  LiveForm(const LiveForm&) = delete;
  LiveForm& operator=(const LiveForm&) = delete;
  ~LiveForm();

  // Shows the form anew at a point of the stage. What was shown stays until the new form stands,
  // and stays with the reason given (UTF-8) if it cannot. `path` is where the form's file is or
  // would be.
  std::string Show(const Design& design, const std::string& path, POINT corner);
  // Carries a change over to what is shown. False where that takes a new form.
  bool Carry(const Design& design, const ChangeReport& report);

  HWND Window() const noexcept;  // null before Show
  // Null if it is not shown.
  host::FormControl* Find(const Design& design, ControlId id) const;
  // The program whose only form this is; null before Show.
  host::Program* program() const noexcept { return program_.get(); }

 private:
  std::unique_ptr<host::Program> Made(form::FormFile file, const Design& design,
                                      const std::string& path);
  void PlaceControls(const Design& design, const Ids& ids);
  void SizeWindow(const Design& design);

  host::ControlClasses& classes_;
  host::DesignStage& stage_;
  std::unique_ptr<host::Program> program_;
};

}  // namespace qrn::designer
