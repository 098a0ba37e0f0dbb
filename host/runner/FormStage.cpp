// A form that is designed: its controls come and go one by one.
#include "host/container/Text.h"
#include "host/runner/Form.h"

namespace qrn::host {

FormControl& Form::AddControl(const std::vector<form::ControlNode>& nodes, FormControl* container) {
  form::Mistakes mistakes;
  const size_t before = controls_.size();
  controls_.Add(*this, nodes, container, mistakes);
  if (controls_.size() == before) throw form::FileRefused(source_->path, mistakes);
  const Com<FormControl> control = controls_.list().back();
  try {
    CompanionFiles files = source_->Companions();
    control->Make();
    control->Read(files, mistakes);
  } catch (const ClassNotFound& unknown) {
    mistakes.Add(control->line(), unknown.reason);
  }
  if (!mistakes.Any() && !control->Create()) {
    mistakes.Add(control->line(), Utf8(control->DisplayName()) + " does not come up");
  }
  if (!mistakes.Any()) return *control;
  RemoveControl(*control);
  throw form::FileRefused(source_->path, mistakes);
}

void Form::RemoveControl(FormControl& control) noexcept {
  const Com<FormControl> alive(&control);
  pieces_.Forget();
  const HWND holder = control.ParentWindow();
  controls_.Remove(control);
  if (holder) InvalidateRect(holder, nullptr, FALSE);
}

void Form::ArrangeControls(const std::vector<FormControl*>& order) {
  controls_.Arrange(order);
  for (auto control = order.rbegin(); control != order.rend(); ++control) {
    if (!(*control)->Window()) continue;
    SetWindowPos((*control)->Window(), HWND_TOP, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  }
  window_.Repaint();
}

}  // namespace qrn::host
