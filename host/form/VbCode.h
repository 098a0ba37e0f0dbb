// A form's code, from Visual Basic as it is written to the system's script engine. Both are
// dialects of one language; the engine's has no types, no jumps and fewer statements. What can be
// put in other words is rewritten, what cannot is refused with line and reason.
//
// What is kept of Visual Basic's meaning: a variable begins with its type's value, and what is
// assigned to a typed variable, element or function is converted to that type (so 7 / 2 into an
// Integer gives 4). Static variables keep their value. Select Case takes To and Is. LBound gives
// the declared bound. What is not kept: elements of a new array are Empty (which counts as 0 and
// ""), and an array handed to another procedure begins at 0 there.
#pragma once

#include <string>
#include <vector>

#include "host/form/Mistakes.h"

namespace qrn::form {

struct Procedure {
  std::string name;
  int line = 0;
  bool isFunction = false;
  int parameterCount = 0;
};

struct ScriptCode {
  // Lines end with LF; line n of it is line `firstLine` + n of the form file, so that the engine's
  // error positions are the file's.
  std::string text;
  int firstLine = 1;
  std::vector<Procedure> procedures;

  // Null if there is no such procedure. Names ignore case.
  const Procedure* Find(const std::string& name) const noexcept;
};

// Names the rewritten code uses that the host must give it, beside Visual Basic's own functions.
inline constexpr char kThisFormName[] = "ThisForm_";  // what Me stands for
inline constexpr char kPrintName[] = "HostPrint_";    // Print_ item, ";" or ",", item, ...
inline constexpr char kAssertName[] = "HostAssert_";  // Debug.Assert
inline constexpr char kEndName[] = "HostEnd_";        // the End statement
inline constexpr char kOwnPrefix[] = "Host_";         // before a function the engine may lack

// Functions of Visual Basic that not every script engine has: the host brings its own, under the
// same name with `kOwnPrefix`. Ends with null.
extern const char* const kOwnFunctions[];

// `lines` are the code part of a form file, the first with the number `firstLine`. With mistakes
// the result is not to be run.
ScriptCode RewriteCode(const std::vector<std::string>& lines, int firstLine, Mistakes& mistakes);

// A handler of an event with another count of parameters is a mistake: it would fail at each event.
void CheckParameters(const Procedure& handler, int expected, Mistakes& mistakes);

}  // namespace qrn::form
