// Failures of scripts in Visual Basic's numbers and plain words.
#pragma once

#include "host/script/ScriptEngine.h"

namespace qrn::host {

// What an engine's error object tells. An error while the code is read has no number of its own.
ScriptFault FaultOf(IActiveScriptError* error);

// The error number of a failure: what a control error value carries in its low half, Visual Basic's
// own number for a failure of a dispatch interface, 440 for any other.
int ErrorNumber(HRESULT code) noexcept;

// What the number means, in plain words; empty for a number that has no words here.
std::wstring ErrorWords(int number);

}  // namespace qrn::host
