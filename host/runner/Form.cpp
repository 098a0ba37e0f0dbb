#include "host/runner/Form.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

#include "host/container/Text.h"
#include "host/runner/InputEvents.h"
#include "host/runner/Program.h"
#include "host/runner/design/PropertyPages.h"
#include "host/script/VbErrors.h"

namespace qrn::host {
namespace {

// Shows each label the window that comes after it in the order of the Tab key, hidden or not.
void NameByLabels(const ControlSet& controls) {
  std::vector<FormControl*> order;
  for (const Com<FormControl>& control : controls) order.push_back(control.get());
  std::ranges::stable_sort(order, {}, &FormControl::tabIndex);
  for (auto piece = order.begin(); piece != order.end(); ++piece) {
    const auto next = std::find_if(piece + 1, order.end(),
                                   [](const FormControl* control) { return control->Window(); });
    if (next != order.end()) (*piece)->StandBefore((*next)->Window());
  }
}

}  // namespace

Form::Form(Program& program, std::shared_ptr<const FormSource> source)
    : program_(&program),
      source_(std::move(source)),
      isDesign_(program.options().design),
      stage_(program.options().stage),
      name_(Wide(source_->Name())),
      window_(*this),
      code_(*this),
      keyboard_(controls_, window_, code_),
      pieces_(controls_) {
  form::Mistakes mistakes;
  ReadLook(mistakes);
  controls_.Add(*this, source_->file.form.children, nullptr, mistakes);
  if (mistakes.Any()) throw form::FileRefused(source_->path, mistakes);
}

void Form::ReadLook(form::Mistakes& mistakes) {
  CompanionFiles files = source_->Companions();
  look_ = ReadFormLook(source_->file.form, files, mistakes);
}

ControlClasses& Form::classes() const { return program_->classes(); }

AmbientValues Form::Ambients() const {
  AmbientValues ambients;
  ambients.userMode = !IsDesign();
  ambients.backColor = look_.backColor;
  ambients.foreColor = look_.foreColor;
  ambients.font = look_.font;
  ambients.scaleUnits = look_.pixelScale ? L"Pixel" : L"Twip";
  return ambients;
}

void Form::Load() {
  if (state_ != State::Unloaded) return;
  state_ = State::Loading;
  try {
    form::Mistakes toldBefore;
    ReadLook(toldBefore);
    window_.Make(look_, stage_ ? stage_->Window() : nullptr);
    MakeControls();
    if (!IsDesign()) code_.Start();
    CreateControls();
  } catch (...) {
    Dismantle();
    throw;
  }
  state_ = State::Loaded;
  keyboard_.Begin();
  code_.Raise(L"Load");
}

void Form::MakeControls() {
  CompanionFiles files = source_->Companions();
  form::Mistakes mistakes;
  for (const Com<FormControl>& control : controls_) {
    try {
      control->Make();
      control->Read(files, mistakes);
    } catch (const ClassNotFound& unknown) {
      mistakes.Add(control->line(), unknown.reason);
    }
  }
  if (!IsDesign()) code_.CheckHandlers(mistakes);
  if (mistakes.Any()) throw form::FileRefused(source_->path, mistakes);
}

void Form::CreateControls() {
  form::Mistakes mistakes;
  for (const Com<FormControl>& control : controls_) {
    if (control->Create()) continue;
    mistakes.Add(control->line(), Utf8(control->DisplayName()) + " does not come up");
  }
  NameByLabels(controls_);
  if (mistakes.Any()) throw form::FileRefused(source_->path, mistakes);
}

void Form::EnsureLoaded() {
  if (state_ != State::Unloaded) return;
  if (!program_) throw ScriptError{kCannotLoad, L"the program has ended"};
  try {
    Load();
  } catch (const std::runtime_error& error) {
    throw ScriptError{kCannotLoad, Wide(error.what())};
  }
}

void Form::Display(bool modal) {
  EnsureLoaded();
  if (!Window()) return;
  window_.Show(look_.windowState);
  keyboard_.OnShown();
  if (Window()) UpdateWindow(Window());
  if (!modal || !Window()) return;
  window_.BeModal(program_->Windows());
  program_->RunUntil([this] { return !window_.IsModal(); });
  window_.EndModal();
}

void Form::Conceal() { window_.Hide(); }

bool Form::Unload(UnloadCause cause) {
  if (state_ != State::Loaded) return true;
  int16_t cancel = 0;
  RaisedArguments query{ByReference(cancel), ByValue(static_cast<int16_t>(cause))};
  code_.Raise(L"QueryUnload", query.get());
  if (cancel == 0 && state_ == State::Loaded) {
    RaisedArguments unload{ByReference(cancel)};
    code_.Raise(L"Unload", unload.get());
  }
  if (cancel != 0 || state_ != State::Loaded) return cancel == 0;
  Dismantle();
  if (program_) program_->OnUnloaded();
  return true;
}

// A control that writes what was typed when it is left is left while its handlers can still refuse.
// They may have closed the form themselves.
void Form::LeaveControls() noexcept {
  const HWND focus = GetFocus();
  if (state_ == State::Loaded && focus && IsChild(Window(), focus)) ::SetFocus(nullptr);
}

void Form::Dismantle() noexcept {
  const Com<Form> alive(this);
  LeaveControls();
  if (IsUnloaded()) return;
  state_ = State::Unloading;
  keyboard_.End();
  pieces_.Forget();
  const auto& all = controls_.list();
  for (auto control = all.rbegin(); control != all.rend(); ++control) (*control)->Destroy();
  window_.Close();
  state_ = State::Unloaded;
}

void Form::Detach() noexcept {
  if (state_ == State::Loaded) Dismantle();
  code_.Stop();
  controls_.Clear();
  program_ = nullptr;
}

bool Form::PreTranslate(MSG& message) {
  if (!Window() || (message.hwnd != Window() && !IsChild(Window(), message.hwnd))) return false;
  const Com<Form> alive(this);
  return IsKeyMessage(message.message) && keyboard_.PreTranslate(message, look_.keyPreview);
}

void Form::OnUIActive(FormControl& control) {
  if (!stage_) keyboard_.OnActive(control);
}

void Form::OnFocus(FormControl& control) {
  if (!stage_) keyboard_.OnFocus(control);
}

bool Form::HasPages(const FormControl& control) const {
  IUnknown* object = control.HostedObject();
  return object && HasPropertyPages(object, classes());
}

void Form::ShowPages(FormControl& control) {
  if (stage_) return stage_->ShowPages(control);
  IUnknown* object = control.HostedObject();
  if (object && ShowPropertyPages(Window(), control.DisplayName(), object, classes())) return;
  program_->Tell(source_->path + ": " + Utf8(control.DisplayName()) + " has no property pages",
                 MB_ICONINFORMATION);
}

HRESULT Form::FindOther(LPOLESTR name, LCID locale, DISPID* id) {
  return code_.FindName(name, locale, id);
}

HRESULT Form::InvokeOther(DISPID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                          VARIANT* result, EXCEPINFO* exception, UINT* badArgument) {
  return code_.UseName(id, locale, flags, parameters, result, exception, badArgument);
}

}  // namespace qrn::host
