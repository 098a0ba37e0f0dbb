// The designer's form at run time, and the property pages of its live controls.
#include <cstdio>
#include <exception>

#include "host/container/Text.h"
#include "host/designer/document/FormStore.h"
#include "host/designer/document/PropertyText.h"
#include "host/designer/window/DesignWindow.h"
#include "host/designer/window/PageChanges.h"
#include "host/designer/window/WindowTexts.h"
#include "host/form/SourceText.h"
#include "host/runner/design/PropertyPages.h"

namespace qrn::designer {
namespace {

using host::Wide;

// The form as it stands now, saved or not.
std::shared_ptr<const host::FormSource> SourceOf(const Design& design, const std::string& path) {
  const std::string companion = CompanionNameOf(path);
  const FormImages images = ImagesOf(design.document(), design.companion(), companion);
  std::map<std::string, std::string> companions;
  if (images.hasReferences) companions[companion] = images.companion.bytes;
  return host::MakeFormSource(path, images.form, std::move(companions));
}

// The designer is out of the way as long as this lives.
class Hidden {
 public:
  explicit Hidden(HWND window) noexcept : window_(window) { ShowWindow(window, SW_HIDE); }
  Hidden(const Hidden&) = delete;
  Hidden& operator=(const Hidden&) = delete;
  ~Hidden() {
    ShowWindow(window_, SW_SHOW);
    SetForegroundWindow(window_);
  }

 private:
  HWND window_;
};

// Points at a program as long as it lives.
class Pointed {
 public:
  Pointed(host::Program*& at, host::Program& program) noexcept : at_(at) { at_ = &program; }
  Pointed(const Pointed&) = delete;
  Pointed& operator=(const Pointed&) = delete;
  ~Pointed() { at_ = nullptr; }

 private:
  host::Program*& at_;
};

}  // namespace

void DesignWindow::OnRunStart() {
  if (running_ || !Settle()) return;
  std::wstring reason;
  int line = 0;
  try {
    host::Program program(classes_, {false, options_.boxes});
    if (printer_) program.SetPrinter(printer_);
    program.Add(SourceOf(*design_, path_));
    program.AddNamed();
    {
      const Hidden hidden(window_);
      const Pointed running(running_, program);
      program.Start();
      program.Run();
    }
    const auto& fault = program.firstFault();
    if (fault && fault->path == path_) line = fault->line;
  } catch (const form::FileRefused& refused) {
    reason = Wide(refused.what());
    line = refused.mistakes().List().front().line;
  } catch (const std::exception& error) {
    reason = Wide(error.what());
  } catch (const host::ClassNotFound& missing) {
    reason = Wide(missing.reason);
  }
  if (closed_) return;
  if (!reason.empty()) {
    Box(Said(WindowText::CannotRun, options_.language, {reason}), MB_OK | MB_ICONERROR);
  }
  if (line > 0) GoToLine(line);
}

bool DesignWindow::HasPages(ControlId control) const {
  const host::FormControl* live = surface_->Live(control);
  return live && live->HostedObject() && host::HasPropertyPages(live->HostedObject(), classes_);
}

void DesignWindow::ShowPages(ControlId control) {
  const host::FormControl* live = surface_->Live(control);
  const host::Com<IUnknown> object(live ? live->HostedObject() : nullptr);
  const std::wstring name = live ? live->DisplayName() : Wide(design_->Name(control));
  const PageChanges changes(object);
  if (!object || !host::ShowPropertyPages(window_, name, object.get(), classes_)) {
    Box(Said(WindowText::NoPages, options_.language, {name}), MB_OK | MB_ICONINFORMATION);
    return;
  }
  if (design_->Has(control)) Tell(changes.PutInto(*design_, control));
}

}  // namespace qrn::designer
