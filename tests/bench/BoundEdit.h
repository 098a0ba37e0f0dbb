// An edit control whose window costs nothing: what is left is ours.
#pragma once

#include <string>
#include <utility>

#include "binding/BoundFaces.h"
#include "binding/registry/FormControls.h"
#include "tests/bench/Measure.h"

namespace bench {

class BoundEdit final : public qrn::EditFace {
 public:
  BoundEdit(std::string name, qrn::TextWindow& form, std::string table, std::string field)
      : name_(std::move(name)), form_(form), table_(std::move(table)), field_(std::move(field)) {
    Check(qrn::TheRegistry().RegisterFieldControl(*this) == 0, "an edit does not register");
  }
  ~BoundEdit() { qrn::TheRegistry().UnregisterFieldControl(*this); }

  qrn::WindowHandle ContainedWindow() override { return &window_; }
  void ShowFieldText(const char* text) override { qrn::WriteWindowText(&window_, text); }
  void ClearFieldText() override { ShowFieldText(""); }
  void Destroy() override {}
  std::string GetControlName() override { return name_; }
  qrn::WindowHandle GetContainerWindow() override { return &form_; }
  qrn::ControlType GetControlType() override { return qrn::kTypeEdit; }
  qrn::NullableText GetBoundField() override { return field_; }
  qrn::NullableText GetBoundTable() override { return table_; }

  const char* Shown() const { return window_.text; }

 private:
  std::string name_;
  qrn::TextWindow& form_;
  std::string table_;
  std::string field_;
  qrn::TextWindow window_;
};

}  // namespace bench
