#include "tools/qrnform/Options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <map>

#include "host/form/UserScript.h"

namespace qrn::qrnform {
namespace {

std::string ScriptHelp() {
  std::string text = "Steps of a script (one a line, # begins a remark):\n";
  for (const std::string& form : form::UserScriptForms()) text += "  " + form + "\n";
  return text;
}

void CheckForms(const Options& options) {
  if (options.design && options.forms.size() > 1) {
    throw CLI::ExtrasError("qrnform", {options.forms.begin() + 1, options.forms.end()});
  }
  if (!options.design && options.forms.empty()) throw CLI::RequiredError("form");
}

}  // namespace

std::optional<Options> ReadOptions(std::vector<std::string> arguments, int* exitCode) {
  Options options;
  CLI::App app("Opens form files as Visual Basic writes them, and runs the code behind them.",
               "qrnform");
  bool noBoxes = false;
  app.add_option("form", options.forms, "form files (.frm); the first one is shown");
  app.add_option("--module", options.modules,
                 "a module with controls, taken as it is, registered or not")
      ->allow_extra_args(false);
  app.add_option("--script", options.script,
                 "does what the file says as a user would, then ends; 1 if a step fails");
  app.add_option("--shot", options.shot,
                 "saves a picture (PNG) of the form once it stands, or when the script has ended");
  app.add_flag("--design", options.design,
               "the designer, with the form or, without one, with a new form");
  app.add_option("--lang", options.language, "what the designer speaks: ja (usual) or en")
      ->transform(CLI::Transformer(std::map<std::string, form::Language>{
          {"ja", form::Language::Japanese}, {"en", form::Language::English}}));
  app.add_flag("--trace", options.trace, "tells each step of the script");
  app.add_flag("--no-boxes", noBoxes, "writes failures of code without a box");
  app.footer(ScriptHelp());
  std::reverse(arguments.begin(), arguments.end());
  try {
    app.parse(arguments);
    CheckForms(options);
  } catch (const CLI::ParseError& error) {
    *exitCode = app.exit(error) == 0 ? 0 : 2;
    return std::nullopt;
  }
  options.boxes = !noBoxes && options.script.empty() && options.shot.empty();
  return options;
}

}  // namespace qrn::qrnform
