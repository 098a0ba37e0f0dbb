// A user script: what someone sitting before the form does and looks at, one step a line.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "host/form/Mistakes.h"

namespace qrn::form {

enum class UserVerb {
  Show,
  Close,
  Focus,
  Click,
  DoubleClick,
  Drag,
  Move,
  Wheel,
  Key,
  Type,
  Wait,
  WaitUntil,
  Expect,
  Set,
  Call,
  Print,
  Shot,
  Message,
  DialogPress,
  DialogChoose,
  DialogEnter,
  DialogExpect,
  DialogTab,
  DialogClick,
  Menu,
  Pace,
  Pages,
  Tool,
  Property,
  Point,
  Draw,
  Pull,
};

// One step. `arguments` holds what stands at the places of the verb's form, by the place's name:
// for "click <control> [at <x> <y>]" these are control and perhaps x and y. Texts have lost their
// quotes; optional words stand under their own name.
struct UserStep {
  UserVerb verb = UserVerb::Wait;
  int line = 0;
  std::map<std::string, std::string, std::less<>> arguments;

  bool Has(std::string_view name) const { return arguments.contains(name); }
  const std::string& Get(std::string_view name) const;  // empty if it is not there
  int Number(std::string_view name) const;              // 0 if it is not there
};

// Reads a script; lines that are empty or begin with # are passed over. A line that fits no verb is
// a mistake that tells how the verb is written.
std::vector<UserStep> ReadUserScript(const std::vector<std::string>& lines, Mistakes& mistakes);

// How the verbs are written, one a line, for help texts.
std::vector<std::string> UserScriptForms();

}  // namespace qrn::form
