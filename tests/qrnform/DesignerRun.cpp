#include "tests/qrnform/DesignerRun.h"

#include <fstream>

#include "host/container/Text.h"
#include "host/user/UserPlayer.h"
#include "tests/qrnform/PlayedScript.h"

namespace qrn::tests {
namespace {

// `@` in the script is the folder.
std::vector<form::UserStep> StepsIn(const std::string& folder, std::string script) {
  for (size_t at = script.find('@'); at != std::string::npos; at = script.find('@')) {
    script.replace(at, 1, folder);
  }
  return StepsOf(script);
}

}  // namespace

DesignerRun::DesignerRun(const std::string& bytes) {
  if (!bytes.empty()) std::ofstream(PathOf("form.frm"), std::ios::binary) << bytes;
}

bool DesignerRun::Has(const std::string& name) const {
  return std::filesystem::exists(std::filesystem::path(host::Wide(PathOf(name))));
}

std::string DesignerRun::Bytes(const std::string& name) const {
  return Has(name) ? form::ReadWholeFile(PathOf(name)) : std::string();
}

std::string DesignerRun::Play(const std::string& script) {
  const Apartment apartment;
  host::ModuleClasses classes;
  designer::DesignWindow window(classes, {form::Language::English, false});
  window.SetPrinter([this](const std::string& text) { printed_ += text; });
  printed_.clear();
  host::DesignerScene scene(window);
  try {
    host::UserPlayer player(scene, StepsIn(PathOf(""), script), "script", false);
    player.Run([&] {
      classes.AddModule(ModuleBeside());
      window.Open(Has("form.frm") ? PathOf("form.frm") : std::string());
    });
    return player.failure();
  } catch (const std::exception& error) {
    return error.what();
  }
}

}  // namespace qrn::tests
