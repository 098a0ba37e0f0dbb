#include "host/script/ScriptEngine.h"

#include <stdexcept>

#include "host/script/EngineSite.h"
#include "host/script/HandlerArguments.h"

namespace qrn::host {
namespace {

// {B54F3741-5B07-11CF-A4B0-00AA004A55E8}
constexpr GUID kVbScript = {
    0xB54F3741, 0x5B07, 0x11CF, {0xA4, 0xB0, 0x00, 0xAA, 0x00, 0x4A, 0x55, 0xE8}};

DISPID IdOfName(IDispatch* members, const std::wstring& name) noexcept {
  DISPID id = DISPID_UNKNOWN;
  LPOLESTR text = const_cast<LPOLESTR>(name.c_str());
  if (!members || FAILED(members->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id))) {
    return DISPID_UNKNOWN;
  }
  return id;
}

}  // namespace

ScriptEngine::ScriptEngine(ScriptHost& host) : site_(MakeCom<EngineSite>(host)) {
  CoCreateInstance(kVbScript, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IActiveScript),
                   engine_.putVoid());
  parser_ = Query<IActiveScriptParse>(engine_);
  if (!parser_ || FAILED(engine_->SetScriptSite(site_.get())) || FAILED(parser_->InitNew())) {
    throw std::runtime_error("the system has no VBScript engine to run the form's code");
  }
}

ScriptEngine::~ScriptEngine() {
  site_->Detach();
  parser_.reset();
  if (engine_) engine_->Close();
}

void ScriptEngine::Add(const std::wstring& name, DWORD flags) {
  com::Check(engine_->AddNamedItem(name.c_str(), flags));
}

void ScriptEngine::AddItem(const std::wstring& name) { Add(name, SCRIPTITEM_ISVISIBLE); }

void ScriptEngine::AddGlobalItem(const std::wstring& name) {
  Add(name, SCRIPTITEM_ISVISIBLE | SCRIPTITEM_GLOBALMEMBERS);
}

bool ScriptEngine::Run(const std::wstring& code, int firstLine) {
  EXCEPINFO exception{};
  site_->TakeFault();
  site_->SetTime(FaultTime::Reading);
  // The engine counts lines from 0 and adds the number it is given.
  HRESULT result = parser_->ParseScriptText(code.c_str(), nullptr, nullptr, nullptr, 0,
                                            static_cast<ULONG>(firstLine), SCRIPTTEXT_ISVISIBLE,
                                            nullptr, &exception);
  site_->SetTime(FaultTime::Running);
  if (SUCCEEDED(result)) result = engine_->SetScriptState(SCRIPTSTATE_STARTED);
  const bool told = site_->TakeFault();
  if (FAILED(result) && !told) {
    site_->host()->OnScriptFault({0, ErrorNumber(result), L"the code cannot be run"});
  }
  return SUCCEEDED(result) && !told;
}

Com<IDispatch> ScriptEngine::Members() const noexcept {
  Com<IDispatch> members;
  engine_->GetScriptDispatch(nullptr, members.put());
  return members;
}

bool ScriptEngine::Has(const std::wstring& name) const noexcept {
  return IdOfName(Members().get(), name) != DISPID_UNKNOWN;
}

bool ScriptEngine::Call(const std::wstring& procedure, std::span<const Variant> before,
                        DISPPARAMS& parameters, VARIANT* result) {
  const Com<IDispatch> members = Members();
  const DISPID id = IdOfName(members.get(), procedure);
  if (id == DISPID_UNKNOWN) return true;
  HandlerArguments arguments(before, parameters);
  EXCEPINFO exception{};
  UINT bad = 0;
  site_->TakeFault();
  const Com<EngineSite> site = site_;
  const HRESULT code = members->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                       arguments.get(), result, &exception, &bad);
  const Bstr source = Bstr::Take(exception.bstrSource);
  const Bstr description = Bstr::Take(exception.bstrDescription);
  const Bstr help = Bstr::Take(exception.bstrHelpFile);
  arguments.PutBack();
  const bool told = site->TakeFault();
  if (FAILED(code) && !told && site->host()) {
    const int number = ErrorNumber(code == DISP_E_EXCEPTION ? exception.scode : code);
    std::wstring words(description.view());
    if (words.empty()) words = ErrorWords(number);
    if (words.empty()) words = L"the procedure could not be run";
    site->host()->OnScriptFault({0, number, procedure + L": " + words});
  }
  return SUCCEEDED(code) && !told;
}

}  // namespace qrn::host
