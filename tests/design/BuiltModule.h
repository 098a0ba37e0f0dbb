// The module file beside the test program, loaded as COM loads it.
#pragma once

#include <windows.h>

#include "binding/tables/AllTables.h"
#include "com/Com.h"
#include "com/Module.h"
#include "ole/SystemGuid.h"
#include "ole/tables/Members.h"
#include "tests/support/Test.h"

namespace qrn::test {

using namespace qrn::com;
using namespace qrn::ole;

std::wstring ModuleFile();

// The module, loaded at first use and kept until the program ends, and its entries.
HMODULE Module();
HRESULT RegisterModule();
HRESULT UnregisterModule();
HRESULT ClassObjectOf(const Guid& classId, REFIID id, void** out);
bool ModuleMayUnload();

// A new object of a class; empty where the module has no such class.
Com<IUnknown> Make(const Guid& classId);

// Runs a program to its end, a minute at most; gives what it returned.
DWORD RunTool(std::wstring command);

// Registers the module as long as it lives.
class Registered : Pinned {
 public:
  Registered() : result(RegisterModule()) {}
  ~Registered() { UnregisterModule(); }

  HRESULT result;
};

}  // namespace qrn::test
