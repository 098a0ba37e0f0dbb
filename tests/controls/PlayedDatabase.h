// The database control of the test's form, over the office's dictionary.
#pragma once

#include "binding/registry/ControlRegistry.h"
#include "tests/bound/Office.h"
#include "tests/ole/TestSite.h"

namespace qrn::test {

class PlayedDatabase final : public DataControl {
 public:
  explicit PlayedDatabase(Office& office) : office_(office) {
    TheRegistry().RegisterDataControl(*this);
  }
  ~PlayedDatabase() { TheRegistry().UnregisterDataControl(*this); }

  DbDictionary* GetDictionary() const noexcept override { return office_.Dictionary(); }
  std::optional<std::string> AskFormName() override { return "Form1"; }
  std::optional<WindowHandle> AskFormWindow() override { return TheForm(); }
  void Destroy() override {}
  std::string GetControlName() override { return "Db1"; }
  WindowHandle GetContainerWindow() override { return TheForm(); }
  ControlType GetControlType() override { return kTypeBtr; }
  const char* DdfDirText() const noexcept override { return office_.Directory(); }
  const char* OwnerNameText() const noexcept override { return ""; }
  int32_t OpenModeValue() const noexcept override { return 0; }
  void DictionaryIsTaken() noexcept override {}

 private:
  Office& office_;
};

}  // namespace qrn::test
