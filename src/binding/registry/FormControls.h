// The controls of one form as the engine's bound operations see them.
#pragma once

#include "binding/registry/ControlRegistry.h"
#include "core/FieldControls.h"

namespace qrn {

class FormControls final : public FieldControls {
 public:
  // `container` is what GetContainerWindow of the control gives that runs the operation.
  explicit FormControls(WindowHandle container) noexcept : container_(container) {}

  int32_t ReadControlField(const DbTableInfo& table, const DbFieldInfo& field,
                           std::string& text) override {
    return TheRegistry().ReadControlField(container_, table, field, text);
  }
  void WriteControlField(const DbTableInfo& table, const DbFieldInfo& field,
                         const char* text) override {
    TheRegistry().WriteControlField(container_, table, field, text);
  }
  void ClearControlField(const DbTableInfo& table, const DbFieldInfo& field) override {
    TheRegistry().ClearControlField(container_, table, field);
  }

 private:
  WindowHandle container_;
};

}  // namespace qrn
