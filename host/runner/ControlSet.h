// What stands on a form: its controls in the order of the file, and the arrays they make up.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/runner/ControlArray.h"

namespace qrn::host {

// Holds the controls as long as it has them. What it gives out plainly lives until Clear.
class ControlSet {
 public:
  // Adds the controls of `nodes` and of all that these hold; `container` is what they lie in, null
  // for `form` itself. A class that cannot be had, a name that stands twice and content of what
  // holds nothing are mistakes; the rest is added.
  void Add(Form& form, const std::vector<form::ControlNode>& nodes, FormControl* container,
           form::Mistakes& mistakes);
  // Takes a control out with all that lies in it: they fail every use from here on.
  void Remove(FormControl& control) noexcept;
  // These come in this order where they stand in the list, all others behind them.
  void Arrange(const std::vector<FormControl*>& order);
  // The form is going: every control is let go, and fails every use from here on.
  void Clear() noexcept;

  // Those that hold others stand before what they hold.
  const std::vector<Com<FormControl>>& list() const noexcept { return list_; }
  auto begin() const noexcept { return list_.begin(); }
  auto end() const noexcept { return list_.end(); }
  size_t size() const noexcept { return list_.size(); }

  // The control of that name, of an array the element `index`; null if there is none.
  FormControl* Find(std::wstring_view name, int index = -1) const noexcept;
  // What code means by a name: a control or an array. Empty if there is neither.
  Com<IDispatch> Object(std::wstring_view name) const;
  // The innermost control that has the window, or a window around it; null if there is none.
  FormControl* Of(HWND window) const noexcept;

 private:
  void AddToArray(FormControl& element);
  void RemoveFromArray(const FormControl& element) noexcept;

  std::vector<Com<FormControl>> list_;
  std::vector<std::pair<std::wstring, Com<ControlArray>>> arrays_;
};

}  // namespace qrn::host
