#include "host/runner/Program.h"

#include <fcntl.h>
#include <io.h>

#include <algorithm>
#include <cstdio>

#include "host/container/Counted.h"
#include "host/container/Text.h"
#include "host/container/TypeNames.h"
#include "host/runner/FolderForms.h"
#include "host/script/VbErrors.h"

namespace qrn::host {
namespace {

void PrintToOutput(const std::string& utf8) {
  fwrite(utf8.data(), 1, utf8.size(), stdout);
  fflush(stdout);
}

void TellOnError(const std::string& utf8) {
  fprintf(stderr, "%s\n", utf8.c_str());
  fflush(stderr);
}

// What End posted is not for the next program of the thread.
void DropQuit() noexcept {
  MSG message{};
  PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
}

struct PointerRow {
  int pointer;
  WORD cursor;  // the system's resource number
};

constexpr PointerRow kPointers[] = {{1, 32512},  {2, 32515},  {3, 32513}, {5, 32646},
                                    {11, 32514}, {12, 32648}, {13, 32650}};
constexpr WORD kArrow = 32512;

}  // namespace

Program::Program(ControlClasses& classes, ProgramOptions options)
    : classes_(classes),
      options_(options),
      globals_(MakeCom<ScriptGlobals>(static_cast<ProgramServices&>(*this))),
      printer_(PrintToOutput),
      teller_(TellOnError) {}

Program::~Program() {
  for (const Com<Form>& form : forms_) form->Detach();
  DropQuit();
}

void Program::AddLibraries(const FormSource& source) {
  form::Mistakes mistakes;
  for (const form::LibraryReference& library : source.file.libraries) {
    try {
      classes_.Add(library, Wide(source.Folder()));
    } catch (const ClassNotFound& missing) {
      mistakes.Add(library.line, missing.reason);
    }
  }
  if (mistakes.Any()) throw form::FileRefused(source.path, mistakes);
}

void Program::Add(std::shared_ptr<const FormSource> source) {
  AddLibraries(*source);
  if (FormNamed(Wide(source->Name()))) {
    form::Mistakes mistakes;
    mistakes.Add(0, "there is already a form " + source->Name());
    throw form::FileRefused(source->path, mistakes);
  }
  forms_.push_back(MakeCom<Form>(*this, std::move(source)));
}

void Program::AddNamed() {
  const auto isKnown = [this](const std::string& name) { return FormNamed(Wide(name)) != nullptr; };
  for (size_t i = 0; i < forms_.size(); ++i) {
    for (const std::string& path : FormsNamedBy(forms_[i]->source(), isKnown)) {
      const auto source = ReadFormSource(path);
      // Two files may have forms of one name: the first of them is it.
      if (!isKnown(source->Name())) Add(source);
    }
  }
}

void Program::AddConstants() {
  for (const Com<ITypeLib>& library : classes_.Libraries()) {
    globals_->AddConstants(ListConstants(library.get()));
  }
}

void Program::Start() {
  AddConstants();
  const Com<Form> first = forms_.front();
  first->Load();
  if (first->IsLoaded() && !ended_) first->Display(false);
}

void Program::Dispatch(MSG& message) {
  for (size_t i = 0; i < forms_.size(); ++i) {
    const Com<Form> form = forms_[i];
    if (form->PreTranslate(message)) return;
  }
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

void Program::RunUntil(const std::function<bool()>& done) {
  const Counted loop(loops_);
  MSG message{};
  while (!ended_ && !done()) {
    const BOOL got = GetMessageW(&message, nullptr, 0, 0);
    if (got == 0) {
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    if (got > 0) Dispatch(message);
  }
}

void Program::Run() {
  RunUntil([] { return false; });
  DropQuit();
}

void Program::End() {
  if (ended_) return;
  ended_ = true;
  PostQuitMessage(0);
}

void Program::DoEvents() {
  MSG message{};
  while (!ended_ && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) return PostQuitMessage(static_cast<int>(message.wParam));
    Dispatch(message);
  }
}

Form* Program::FormNamed(std::wstring_view name) const noexcept {
  for (const Com<Form>& form : forms_) {
    if (SameName(form->name(), name)) return form.get();
  }
  return nullptr;
}

std::vector<HWND> Program::Windows() const {
  std::vector<HWND> windows;
  for (const Com<Form>& form : forms_) {
    if (form->Window()) windows.push_back(form->Window());
  }
  return windows;
}

Form* Program::ActiveForm() const noexcept {
  HWND front = GetActiveWindow();
  for (const Com<Form>& form : forms_) {
    if (form->Window() && form->Window() == front) return form.get();
  }
  for (const Com<Form>& form : forms_) {
    if (form->Window() && IsWindowVisible(form->Window())) return form.get();
  }
  return forms_.empty() ? nullptr : forms_.front().get();
}

void Program::SetPrinter(std::function<void(const std::string&)> printer) {
  printer_ = std::move(printer);
}

void Program::Print(const std::wstring& text, bool openEnd) {
  printer_(Utf8(text) + (openEnd ? "" : "\n"));
  column_ = openEnd ? column_ + text.size() : 0;
}

int Program::ShowBox(const std::wstring& text, UINT style, const std::wstring& title) {
  const Form* owner = ActiveForm();
  const HWND window = owner ? owner->Window() : nullptr;
  return MessageBoxW(window && IsWindowVisible(window) ? window : nullptr, text.c_str(),
                     title.c_str(), style);
}

void Program::SetTeller(std::function<void(const std::string&)> teller) {
  teller_ = std::move(teller);
}

void Program::Tell(const std::string& text, UINT style) {
  teller_(text);
  if (options_.boxes) ShowBox(Wide(text), style, Title());
}

void Program::OnFault(const Form& form, const ScriptFault& fault) {
  ++faults_;
  if (!firstFault_) firstFault_ = FaultPlace{form.source().path, fault.line};
  std::string text = form.source().path;
  if (fault.line > 0) text += ":" + std::to_string(fault.line);
  text += ": error " + std::to_string(fault.number) + ": " + Utf8(fault.description);
  Tell(text, MB_ICONERROR);
}

void Program::OnUnloaded() {
  const bool left = std::any_of(forms_.begin(), forms_.end(),
                                [](const Com<Form>& form) { return form->IsLoaded(); });
  if (!left) End();
}

Form& Program::FormOf(const Variant& value) const {
  for (const Com<Form>& form : forms_) {
    if (value.type() == VT_DISPATCH && value->pdispVal == static_cast<IDispatch*>(form.get())) {
      return *form;
    }
  }
  throw ScriptError{kObjectRequired, L"Load and Unload take a form"};
}

void Program::LoadForm(const Variant& form) { FormOf(form).EnsureLoaded(); }
void Program::UnloadForm(const Variant& form) { FormOf(form).Unload(UnloadCause::Code); }

std::wstring Program::Folder() const {
  return forms_.empty() ? L"." : Wide(forms_.front()->source().Folder());
}

std::wstring Program::Title() const {
  if (forms_.empty()) return L"";
  const std::wstring& caption = forms_.front()->look().caption;
  return caption.empty() ? forms_.front()->name() : caption;
}

void Program::SetMousePointer(int pointer) {
  mousePointer_ = pointer;
  const auto* row = std::find_if(std::begin(kPointers), std::end(kPointers),
                                 [&](const PointerRow& known) { return known.pointer == pointer; });
  SetCursor(
      LoadCursorW(nullptr, MAKEINTRESOURCEW(row == std::end(kPointers) ? kArrow : row->cursor)));
}

}  // namespace qrn::host
