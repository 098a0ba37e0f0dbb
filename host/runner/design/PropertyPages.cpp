#include "host/runner/design/PropertyPages.h"

#include "host/runner/design/PropertyFrame.h"

namespace qrn::host {

bool ShowPropertyPages(HWND owner, const std::wstring& controlName, IUnknown* control,
                       ControlClasses& classes) {
  PropertyFrame frame({&control, 1}, classes);
  if (!frame.HasPages()) return false;
  frame.Run(owner, controlName + L" プロパティ");
  return true;
}

bool HasPropertyPages(IUnknown* control, ControlClasses& classes) {
  return PropertyFrame({&control, 1}, classes).HasPages();
}

}  // namespace qrn::host
