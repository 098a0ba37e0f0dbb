// The system's own interpreter of registration scripts, as its atl.dll offers it.
#pragma once

#include <unknwn.h>

#include "ole/tables/Guid.h"

namespace qrn::test {

// Not in an unnamed namespace: the compiler would conclude that nobody implements it.
class SystemRegistrar : public IUnknown {
 public:
  STDMETHOD(AddReplacement)(LPCOLESTR key, LPCOLESTR item) = 0;
  STDMETHOD(ClearReplacements)() = 0;
  STDMETHOD(ResourceRegisterSz)(LPCOLESTR file, LPCOLESTR id, LPCOLESTR type) = 0;
  STDMETHOD(ResourceUnregisterSz)(LPCOLESTR file, LPCOLESTR id, LPCOLESTR type) = 0;
  STDMETHOD(FileRegister)(LPCOLESTR file) = 0;
  STDMETHOD(FileUnregister)(LPCOLESTR file) = 0;
  STDMETHOD(StringRegister)(LPCOLESTR data) = 0;
  STDMETHOD(StringUnregister)(LPCOLESTR data) = 0;
  STDMETHOD(ResourceRegister)(LPCOLESTR file, UINT id, LPCOLESTR type) = 0;
  STDMETHOD(ResourceUnregister)(LPCOLESTR file, UINT id, LPCOLESTR type) = 0;
};

inline constexpr ole::Guid kSystemRegistrar = ole::MakeGuid("44EC053A-400F-11D0-9DCD-00A0C90391D3");
inline constexpr ole::Guid kSystemRegistrarId =
    ole::MakeGuid("44EC053B-400F-11D0-9DCD-00A0C90391D3");

}  // namespace qrn::test
