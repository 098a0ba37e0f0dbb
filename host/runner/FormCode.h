// The code behind a form: its engine, its handlers, the names it knows.
#pragma once

#include <memory>
#include <span>
#include <string>

#include "host/form/Mistakes.h"
#include "host/script/ScriptEngine.h"

namespace qrn::host {

class Form;
class FormControl;

// Nothing runs before Start: then events are raised for nobody. Once started it keeps its
// variables, however often the form is unloaded and loaded, until Stop.
class FormCode final : private ScriptHost {
 public:
  // `form` is the one whose code this is; it outlives this.
  explicit FormCode(Form& form) noexcept : form_(form) {}

  // A handler with another count of parameters than its event is a mistake: it would fail at each
  // event. The controls must have been made: they tell their events.
  void CheckHandlers(form::Mistakes& mistakes) const;
  // Runs what stands outside procedures, then Form_Initialize, unless it has been done before. The
  // names of the program's forms, and of the controls, are those of now. Throws std::runtime_error
  // with a plain reason, once the user has been told what is wrong.
  void Start();
  void Stop() noexcept { engine_.reset(); }

  // Runs the handler of an event, if there is one: of a control, of the form itself. What it
  // changes of by-reference parameters comes back. A failure is told to the user, and goes no
  // further.
  void Fire(FormControl& control, const std::wstring& event, DISPPARAMS& parameters);
  void Raise(const wchar_t* event, DISPPARAMS& parameters);
  void Raise(const wchar_t* event);

  // The names by which others know this form's content: its controls, then what its code declares.
  // As IDispatch::GetIDsOfNames and Invoke; ids are those of these two alone.
  HRESULT FindName(LPOLESTR name, LCID locale, DISPID* id);
  HRESULT UseName(DISPID id, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                  EXCEPINFO* exception, UINT* badArgument);

 private:
  Com<IDispatch> ItemNamed(const std::wstring& name) override;
  void OnScriptFault(const ScriptFault& fault) override;
  HWND BoxOwner() override;

  void RunHandler(const std::wstring& procedure, std::span<const Variant> before,
                  DISPPARAMS& parameters);
  Com<IDispatch> Members();

  Form& form_;
  std::unique_ptr<ScriptEngine> engine_;
};

}  // namespace qrn::host
