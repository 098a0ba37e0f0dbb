// A form's controls as code sees them: Controls("edtName"), Controls(0), Controls.Count, For Each.
#pragma once

#include "host/container/Scriptable.h"

namespace qrn::host {

class Form;

class ControlList final : public Scriptable {
 public:
  explicit ControlList(Form& form);
  ~ControlList() override;

  void Count(Call& call);
  void Item(Call& call);  // by name or by place from 0; throws ScriptError if there is none
  void NewEnum(Call& call);

 protected:
  std::vector<MemberTable> Tables() const override;

 private:
  Com<Form> form_;
};

}  // namespace qrn::host
