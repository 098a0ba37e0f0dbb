#include "host/runner/FormCode.h"

#include <algorithm>
#include <stdexcept>

#include "host/container/Text.h"
#include "host/form/SourceText.h"
#include "host/runner/Form.h"
#include "host/runner/Program.h"

namespace qrn::host {
namespace {

// Events the container adds to every control, and the form's own, with their parameter counts.
struct EventCount {
  const wchar_t* name;
  int parameterCount;
};

constexpr EventCount kAddedEvents[] = {{L"GotFocus", 0}, {L"LostFocus", 0}};

constexpr EventCount kFormEvents[] = {
    {L"Initialize", 0}, {L"Load", 0},      {L"Unload", 1},   {L"QueryUnload", 2}, {L"Activate", 0},
    {L"Deactivate", 0}, {L"Resize", 0},    {L"Paint", 0},    {L"Click", 0},       {L"DblClick", 0},
    {L"KeyDown", 2},    {L"KeyUp", 2},     {L"KeyPress", 1}, {L"MouseDown", 4},   {L"MouseUp", 4},
    {L"MouseMove", 4},  {L"Terminate", 0}, {L"GotFocus", 0}, {L"LostFocus", 0}};

constexpr wchar_t kGlobalsName[] = L"HostGlobals_";
constexpr DISPID kFirstControlId = 0x50000000;

int ParametersOf(const EventCount* begin, const EventCount* end, const std::wstring& event) {
  const EventCount* found =
      std::find_if(begin, end, [&](const EventCount& row) { return SameName(row.name, event); });
  return found == end ? -1 : found->parameterCount;
}

// Parameters of a control's event; -1 if it has no such event.
int ParametersOf(const FormControl& control, const std::wstring& event) {
  for (const EventInfo& own : control.Events()) {
    if (SameName(own.name, event)) return own.parameterCount + (control.index() >= 0 ? 1 : 0);
  }
  const int added = ParametersOf(std::begin(kAddedEvents), std::end(kAddedEvents), event);
  return added < 0 ? -1 : added + (control.index() >= 0 ? 1 : 0);
}

void CheckCount(const form::Procedure& procedure, int expected, form::Mistakes& mistakes) {
  if (expected >= 0) form::CheckParameters(procedure, expected, mistakes);
}

}  // namespace

void FormCode::CheckHandlers(form::Mistakes& mistakes) const {
  for (const form::Procedure& procedure : form_.source().code.procedures) {
    const std::wstring name = Wide(procedure.name);
    for (size_t at = name.find(L'_'); at != std::wstring::npos; at = name.find(L'_', at + 1)) {
      const std::wstring subject = name.substr(0, at);
      const std::wstring event = name.substr(at + 1);
      if (SameName(subject, L"Form")) {
        CheckCount(procedure, ParametersOf(std::begin(kFormEvents), std::end(kFormEvents), event),
                   mistakes);
      }
      const auto& controls = form_.controls();
      const auto found = std::find_if(
          controls.begin(), controls.end(),
          [&](const Com<FormControl>& control) { return SameName(control->name(), subject); });
      if (found != controls.end()) CheckCount(procedure, ParametersOf(**found, event), mistakes);
    }
  }
}

void FormCode::Start() {
  if (engine_) return;
  engine_ = std::make_unique<ScriptEngine>(static_cast<ScriptHost&>(*this));
  engine_->AddGlobalItem(kGlobalsName);
  engine_->AddGlobalItem(Wide(form::kThisFormName));
  for (const Com<Form>& form : form_.program()->forms()) engine_->AddItem(form->name());
  // Arrays are found as members of the form: an item of its own takes no index in every engine.
  for (const Com<FormControl>& control : form_.controls()) {
    if (control->index() < 0) engine_->AddItem(control->name());
  }
  const FormSource& source = form_.source();
  if (!engine_->Run(Wide(source.code.text), source.code.firstLine)) {
    engine_.reset();
    throw std::runtime_error(source.path + ": the form's code cannot be run");
  }
  Raise(L"Initialize");
}

Com<IDispatch> FormCode::ItemNamed(const std::wstring& name) {
  Program* program = form_.program();
  if (!program) return {};
  if (name == kGlobalsName) return Com<IDispatch>(&program->globals());
  if (name == Wide(form::kThisFormName)) return Com<IDispatch>(&form_);
  if (const Com<IDispatch> control = form_.controls().Object(name)) return control;
  Form* other = program->FormNamed(name);
  return other ? Com<IDispatch>(other) : Com<IDispatch>();
}

void FormCode::OnScriptFault(const ScriptFault& fault) {
  if (form_.program()) form_.program()->OnFault(form_, fault);
}

HWND FormCode::BoxOwner() { return form_.Window(); }

void FormCode::Fire(FormControl& control, const std::wstring& event, DISPPARAMS& parameters) {
  std::vector<Variant> before;
  if (control.index() >= 0) before.emplace_back(static_cast<int32_t>(control.index()));
  RunHandler(control.name() + L"_" + event, before, parameters);
}

void FormCode::Raise(const wchar_t* event, DISPPARAMS& parameters) {
  RunHandler(std::wstring(L"Form_") + event, {}, parameters);
}

void FormCode::Raise(const wchar_t* event) {
  DISPPARAMS none{};
  Raise(event, none);
}

void FormCode::RunHandler(const std::wstring& procedure, std::span<const Variant> before,
                          DISPPARAMS& parameters) {
  if (!engine_ || !form_.source().code.Find(Utf8(procedure))) return;
  const Com<Form> alive(&form_);
  engine_->Call(procedure, before, parameters);
}

// Code of a form that is not loaded runs as soon as somebody asks for its members.
Com<IDispatch> FormCode::Members() {
  if (!engine_ && form_.program() && !form_.IsDesign() && form_.IsUnloaded()) Start();
  return engine_ ? engine_->Members() : Com<IDispatch>();
}

HRESULT FormCode::FindName(LPOLESTR name, LCID locale, DISPID* id) {
  const std::vector<Com<FormControl>>& controls = form_.controls().list();
  for (size_t i = 0; i < controls.size(); ++i) {
    if (!SameName(controls[i]->name(), name)) continue;
    *id = kFirstControlId + static_cast<DISPID>(i);
    return S_OK;
  }
  const Com<IDispatch> code = Members();
  return code ? code->GetIDsOfNames(IID_NULL, &name, 1, locale, id) : DISP_E_UNKNOWNNAME;
}

HRESULT FormCode::UseName(DISPID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                          VARIANT* result, EXCEPINFO* exception, UINT* badArgument) {
  const auto place = static_cast<size_t>(id - kFirstControlId);
  if (id >= kFirstControlId && place < form_.controls().size()) {
    const Com<IDispatch> control = form_.controls().Object(form_.controls().list()[place]->name());
    if (parameters->cArgs > 0) {
      return control->Invoke(DISPID_VALUE, IID_NULL, locale, flags, parameters, result, exception,
                             badArgument);
    }
    if (result) *result = Variant(control).release();
    return S_OK;
  }
  const Com<IDispatch> code = Members();
  if (!code) return DISP_E_MEMBERNOTFOUND;
  return code->Invoke(id, IID_NULL, locale, flags, parameters, result, exception, badArgument);
}

}  // namespace qrn::host
