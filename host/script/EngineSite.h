// The site of a script engine.
#pragma once

#include <activscp.h>
#include <windows.h>

#include "host/script/ScriptEngine.h"
#include "host/script/ScriptFault.h"

namespace qrn::host {

class EngineSite final : public ComObject<IActiveScriptSite, IActiveScriptSiteWindow> {
 public:
  explicit EngineSite(ScriptHost& host) noexcept : host_(&host) {}

  void Detach() noexcept { host_ = nullptr; }
  // True if a fault was told since the last call.
  bool TakeFault() noexcept { return std::exchange(faulted_, false); }
  ScriptHost* host() const noexcept { return host_; }
  void SetTime(FaultTime time) noexcept { time_ = time; }

  STDMETHODIMP GetLCID(LCID* locale) override;
  STDMETHODIMP GetItemInfo(LPCOLESTR name, DWORD wanted, IUnknown** item,
                           ITypeInfo** type) override;
  STDMETHODIMP GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
  STDMETHODIMP OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
  STDMETHODIMP OnStateChange(SCRIPTSTATE) override { return S_OK; }
  STDMETHODIMP OnScriptError(IActiveScriptError* error) override;
  STDMETHODIMP OnEnterScript() override { return S_OK; }
  STDMETHODIMP OnLeaveScript() override { return S_OK; }

  STDMETHODIMP GetWindow(HWND* window) override;
  STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }

 private:
  ScriptHost* host_;
  bool faulted_ = false;
  FaultTime time_ = FaultTime::Running;
};

}  // namespace qrn::host
