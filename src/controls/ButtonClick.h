// What a click on an operation button does, from the question to the notice. Everything runs inside
// the click; handlers of `SetData` and `BtrieveError` may call the interface again.
#pragma once

#include <string>

#include "binding/registry/FormControls.h"
#include "core/FieldControls.h"

namespace qrn {

class CQRNBtn;

class ButtonClick final : public BoundButton {
 public:
  // The names are the button's of now: what handlers put there counts from the next click on.
  explicit ButtonClick(CQRNBtn& button);

  // Runs the operation. Its failures are shown; `Click` is the caller's.
  void Run();

  // BoundButton. `IndexID` and `DbLocks` are the button's at the moment of use.
  DbTableInfo* Table() override;
  FieldControls& Controls() override { return controls_; }
  int32_t IndexID() const override;
  int32_t DbLocks() const override;
  bool RefusedBySetData() override;

 private:
  bool Confirmed();
  bool Prepared();
  void Finish(Status result, bool wrote);
  void Report(Status result);

  CQRNBtn& button_;
  WindowHandle form_;
  std::string source_;
  std::string table_;
  FormControls controls_;
};

}  // namespace qrn
