#include "tests/qrnform/DesignerRun.h"

#include <ole2.h>
#include <windows.h>

#include <fstream>

#include "com/Module.h"
#include "host/container/Text.h"
#include "host/form/SourceText.h"
#include "host/user/UserPlayer.h"

namespace qrn::tests {
namespace {

std::wstring ModuleBeside() {
  return std::filesystem::path(com::PathOf(nullptr)).replace_filename(L"qrnbt350.ocx").wstring();
}

std::vector<form::UserStep> StepsOf(std::string script, const std::string& folder) {
  for (size_t at = script.find('@'); at != std::string::npos; at = script.find('@')) {
    script.replace(at, 1, folder);
  }
  form::Mistakes mistakes;
  auto steps = form::ReadUserScript(form::SourceLines("\xEF\xBB\xBF" + script), mistakes);
  if (mistakes.Any()) throw form::FileRefused("script", mistakes);
  return steps;
}

class Apartment {
 public:
  Apartment() { OleInitialize(nullptr); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
  ~Apartment() { OleUninitialize(); }
};

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
    host::UserPlayer player(scene, StepsOf(script, PathOf("")), "script", false);
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
