// The system's script engine running one form's code.
#pragma once

#include <activscp.h>
#include <windows.h>

#include <span>
#include <string>

#include "host/container/ComObject.h"

namespace qrn::host {

// An error while code runs or is read, as Visual Basic counts them.
struct ScriptFault {
  int line = 0;  // of the form file; 0 if the engine did not say
  int number = 0;
  std::wstring description;  // plain words, never empty
};

// What the engine asks of the form whose code it runs.
class ScriptHost {
 public:
  virtual ~ScriptHost() = default;
  // The object behind a name that was added; empty if there is none.
  virtual Com<IDispatch> ItemNamed(const std::wstring& name) = 0;
  virtual void OnScriptFault(const ScriptFault& fault) = 0;
  // The owner of boxes that code shows.
  virtual HWND BoxOwner() = 0;
};

class EngineSite;

class ScriptEngine {
 public:
  // Throws std::runtime_error if the system has no such engine. `host` outlives this.
  explicit ScriptEngine(ScriptHost& host);
  ScriptEngine(const ScriptEngine&) = delete;
  ScriptEngine& operator=(const ScriptEngine&) = delete;
  ~ScriptEngine();

  // Names the code may use. Members of a global item are known by themselves.
  void AddItem(const std::wstring& name);
  void AddGlobalItem(const std::wstring& name);

  // Reads the code, whose first line is `firstLine` of its file, and runs what stands outside
  // procedures. False after a fault, which the host has been told.
  bool Run(const std::wstring& code, int firstLine);

  // True if the code has a procedure or a variable of that name.
  bool Has(const std::wstring& name) const noexcept;

  // Calls a procedure with `before` and then the caller's parameters. By-reference parameters of
  // any type come back changed as the procedure left them. False after a fault.
  bool Call(const std::wstring& procedure, std::span<const Variant> before, DISPPARAMS& parameters,
            VARIANT* result = nullptr);

  // The code's own procedures and variables as members.
  Com<IDispatch> Members() const noexcept;

 private:
  void Add(const std::wstring& name, DWORD flags);

  Com<EngineSite> site_;
  Com<IActiveScript> engine_;
  Com<IActiveScriptParse> parser_;
};

}  // namespace qrn::host
