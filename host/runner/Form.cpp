#include "host/runner/Form.h"

#include <stdexcept>

#include "host/container/Text.h"
#include "host/runner/Furniture.h"
#include "host/runner/HostedFormControl.h"
#include "host/runner/Program.h"
#include "host/runner/PropertyPages.h"
#include "host/runner/RaisedArguments.h"

namespace qrn::host {
namespace {

constexpr HRESULT kCannotLoad = static_cast<HRESULT>(0x800A0168);  // 360

}  // namespace

Form::Form(Program& program, std::shared_ptr<const FormSource> source)
    : program_(&program), source_(std::move(source)), name_(Wide(source_->Name())) {
  CompanionFiles files(source_->Folder());
  form::Mistakes mistakes;
  look_ = ReadFormLook(source_->file.form, files, mistakes);
  AddControls(source_->file.form.children, nullptr, mistakes);
  if (mistakes.Any()) throw form::FileRefused(source_->path, mistakes);
}

void Form::AddControls(const std::vector<form::ControlNode>& nodes, FormControl* container,
                       form::Mistakes& mistakes) {
  for (const form::ControlNode& node : nodes) {
    Com<FormControl> control;
    try {
      control = MakeFormControl(*this, container, node);
    } catch (const ClassNotFound& unknown) {
      mistakes.Add(node.line, unknown.reason);
      continue;
    }
    if (Find(Wide(node.name), node.index)) {
      mistakes.Add(node.line, node.name + " stands twice on the form");
      continue;
    }
    controls_.push_back(control);
    if (node.index >= 0) AddToArray(*control);
    if (!node.children.empty() && !control->HoldsOthers()) {
      mistakes.Add(node.children[0].line, node.name + " cannot hold other controls");
    }
    AddControls(node.children, control.get(), mistakes);
  }
}

void Form::AddToArray(FormControl& element) {
  for (const auto& [arrayName, array] : arrays_) {
    if (SameName(arrayName, element.name())) return array->Add(element);
  }
  arrays_.emplace_back(element.name(), MakeCom<ControlArray>(element.name()));
  arrays_.back().second->Add(element);
}

FormControl* Form::Find(std::wstring_view controlName, int index) const noexcept {
  for (const Com<FormControl>& control : controls_) {
    if (control->index() == index && SameName(control->name(), controlName)) return control.get();
  }
  return nullptr;
}

ControlClasses& Form::classes() const { return program_->classes(); }

bool Form::IsDesign() const { return program_->options().design; }

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
    MakeWindow();
    MakeControls();
    if (!IsDesign()) StartCode();
    CreateControls();
  } catch (...) {
    Dismantle();
    throw;
  }
  state_ = State::Loaded;
  RaiseOwn(L"Load");
}

void Form::MakeControls() {
  CompanionFiles files(source_->Folder());
  form::Mistakes mistakes;
  for (const Com<FormControl>& control : controls_) {
    try {
      control->Make();
      control->Read(files, mistakes);
    } catch (const ClassNotFound& unknown) {
      mistakes.Add(control->line(), unknown.reason);
    }
  }
  if (!IsDesign()) CheckHandlers(mistakes);
  if (mistakes.Any()) throw form::FileRefused(source_->path, mistakes);
}

void Form::CreateControls() {
  form::Mistakes mistakes;
  for (const Com<FormControl>& control : controls_) {
    if (control->Create()) continue;
    mistakes.Add(control->line(), Utf8(control->DisplayName()) + " does not come up");
  }
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
  if (!window_) return;
  ShowWindow(window_, look_.windowState == 2   ? SW_SHOWMAXIMIZED
                      : look_.windowState == 1 ? SW_SHOWMINIMIZED
                                               : SW_SHOW);
  // One that was shown before is not activated by that.
  if (look_.windowState != 1 && GetActiveWindow() != window_) SetForegroundWindow(window_);
  FocusFirst();
  if (window_) UpdateWindow(window_);
  if (!modal || !window_) return;
  BeModal();
  program_->RunUntil([this] { return !modal_; });
  EndModal();
}

void Form::BeModal() {
  modal_ = true;
  for (const Com<Form>& other : program_->forms()) {
    if (other.get() == this || !other->Window() || !IsWindowEnabled(other->Window())) continue;
    waiting_.push_back(other->Window());
    EnableWindow(other->Window(), FALSE);
  }
}

// Before the window goes: the system then gives the keyboard back to who had it.
void Form::EndModal() noexcept {
  modal_ = false;
  for (HWND other : std::exchange(waiting_, {})) EnableWindow(other, TRUE);
}

// The keyboard begins at the first stop of the tab order, once the stops can be seen.
void Form::FocusFirst() {
  if (shownBefore_ || !window_) return;
  shownBefore_ = true;
  if (!active_ && GetForegroundWindow() == window_) FocusNext(false);
  const std::vector<FormControl*> order = TabOrder();
  if (!active_ && !order.empty()) active_ = order.front();
}

void Form::Conceal() {
  EndModal();
  if (window_) ShowWindow(window_, SW_HIDE);
}

bool Form::Unload(UnloadCause cause) {
  if (state_ != State::Loaded) return true;
  int16_t cancel = 0;
  RaisedArguments query{ByReference(cancel), ByValue(static_cast<int16_t>(cause))};
  RaiseOwn(L"QueryUnload", query.get());
  if (cancel == 0 && state_ == State::Loaded) {
    RaisedArguments unload{ByReference(cancel)};
    RaiseOwn(L"Unload", unload.get());
  }
  if (cancel != 0 || state_ != State::Loaded) return cancel == 0;
  Dismantle();
  if (program_) program_->OnUnloaded();
  return true;
}

void Form::Discard() noexcept {
  if (state_ == State::Loaded) Dismantle();
}

void Form::Dismantle() noexcept {
  state_ = State::Unloading;
  const Com<Form> alive(this);
  active_ = focusTold_ = pressedPiece_ = selected_ = nullptr;
  for (auto control = controls_.rbegin(); control != controls_.rend(); ++control) {
    (*control)->Destroy();
  }
  if (frame_) frame_->Detach();
  frame_.reset();
  EndModal();
  if (window_) DestroyWindow(window_);
  window_ = nullptr;
  shownBefore_ = false;
  state_ = State::Unloaded;
}

void Form::Detach() noexcept {
  Discard();
  engine_.reset();
  for (const auto& [name, array] : arrays_) array->Clear();
  arrays_.clear();
  for (const Com<FormControl>& control : controls_) control->Detach();
  controls_.clear();
  program_ = nullptr;
}

void Form::OnUIActive(FormControl& control, bool active) {
  if (active && IsDesign()) Select(&control);
  if (!active || active_ == &control) return;
  FormControl* before = std::exchange(active_, &control);
  if (before) before->GiveUpFocus();
}

void Form::OnFocus(FormControl& control, bool focus) {
  if (!focus || state_ != State::Loaded) return;
  control.OnArrival();
  OnUIActive(control, true);
  TellFocus();
}

// LostFocus and GotFocus for where the keyboard is now. A handler may show a box and send the
// keyboard back: only where it comes to rest is told of it.
void Form::TellFocus() {
  if (std::exchange(tellingFocus_, true)) return;
  RaisedArguments none{};
  while (state_ == State::Loaded && active_ && focusTold_ != active_) {
    FormControl* next = active_;
    if (FormControl* before = std::exchange(focusTold_, nullptr)) {
      Fire(*before, L"LostFocus", none.get());
      continue;
    }
    focusTold_ = next;
    Fire(*next, L"GotFocus", none.get());
  }
  tellingFocus_ = false;
}

void Form::ShowPages(FormControl& control) {
  IUnknown* object = control.HostedObject();
  if (object && ShowPropertyPages(window_, control.DisplayName(), object, classes())) return;
  program_->Tell(source_->path + ": " + Utf8(control.DisplayName()) + " has no property pages",
                 MB_ICONINFORMATION);
}

bool Form::HasPages(const FormControl& control) const {
  IUnknown* object = control.HostedObject();
  return object && HasPropertyPages(object, classes());
}

}  // namespace qrn::host
