// Scripts run by the system's script host, in a process of their own.
#pragma once

#include <string>

namespace qrn::test {

struct ScriptRun {
  std::string printed;  // lines that end in "\n", UTF-8
  std::string boxes;    // "text; " of each message box; they are answered with OK
};

// Runs a script (VBScript, UTF-8) to its end; a minute is the most it gets.
ScriptRun RunInScriptHost(const std::string& text);

}  // namespace qrn::test
