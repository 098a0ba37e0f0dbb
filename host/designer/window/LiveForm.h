// The form itself, as the runner shows it, while it is designed: real controls that draw
// themselves, at design time, made from the design as it stands.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

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
  // Carries a change over to what is shown: what is not touched stays as it is. False where that
  // takes a new form.
  bool Carry(const Design& design, const ChangeReport& report);

  HWND Window() const noexcept;  // null before Show
  // Null if it is not shown.
  host::FormControl* Find(ControlId id) const;
  // The program whose only form this is; null before Show.
  host::Program* program() const noexcept { return program_.get(); }

 private:
  // A control as it is shown, and what it was made from.
  struct Shown {
    host::FormControl* control = nullptr;
    std::vector<form::ControlNode> nodes;  // it alone
    std::string name;
    std::optional<int> index;
    ControlId container = 0;
  };

  host::Form& form() const { return *program_->forms().front(); }
  std::unique_ptr<host::Program> Made(form::FormFile file, const Design& design,
                                      const std::string& path);
  bool StillFits(const Design& design, ControlId id, const Shown& shown) const;
  void Remove(const Design& design, const Ids& changed);
  void AddMissing(const Design& design);
  void Add(const Design& design, ControlId id);
  void Arrange(const Design& design);
  void PlaceControls(const Design& design, const Ids& ids);
  void SizeWindow(const Design& design);

  host::ControlClasses& classes_;
  host::DesignStage& stage_;
  // Nodes outlive the controls that are made from them.
  std::map<ControlId, Shown> shown_;
  std::unique_ptr<host::Program> program_;
};

}  // namespace qrn::designer
