// A control array as code sees it: cmd(2), cmd.Count.
#pragma once

#include <map>
#include <string>

#include "host/runner/FormControl.h"

namespace qrn::host {

class ControlArray final : public Scriptable {
 public:
  explicit ControlArray(std::wstring name) : name_(std::move(name)) {}

  void Add(FormControl& element) { elements_[element.index()] = Com<FormControl>(&element); }
  void Remove(int index) noexcept { elements_.erase(index); }
  // Null if there is no such element.
  FormControl* Find(int index) const noexcept;
  void Clear() noexcept { elements_.clear(); }

  void Item(Call& call);
  void Count(Call& call);
  void LBound(Call& call);
  void UBound(Call& call);

 protected:
  std::vector<MemberTable> Tables() const override;

 private:
  std::wstring name_;
  std::map<int, Com<FormControl>> elements_;
};

}  // namespace qrn::host
