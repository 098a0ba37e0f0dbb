// Failures of scripts in Visual Basic's numbers and plain words.
#pragma once

#include "host/script/ScriptEngine.h"

namespace qrn::host {

// When an engine met an error: while it read the code or while it ran it.
enum class FaultTime { Reading, Running };

// What an engine's error object tells. Some engines tell neither a number nor words: while the code
// is read that is a syntax error, while it runs most often a name that nothing declares or a
// variable that holds no object.
ScriptFault FaultOf(IActiveScriptError* error, FaultTime time);

// The error number of a failure: what a control error value carries in its low half, Visual Basic's
// own number for a failure of a dispatch interface, 440 for any other.
int ErrorNumber(HRESULT code) noexcept;

// What the number means, in plain words; empty for a number that has no words here.
std::wstring ErrorWords(int number);

}  // namespace qrn::host
