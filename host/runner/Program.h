// The running program: its forms, their message loop, what their code prints and asks for.
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/container/ControlClasses.h"
#include "host/runner/DesignStage.h"
#include "host/runner/Form.h"
#include "host/script/ScriptGlobals.h"

namespace qrn::host {

struct ProgramOptions {
  bool design = false;  // user mode off, no code
  // Shows a failure of code in a box besides writing it; off where nobody sits before the screen.
  bool boxes = true;
  DesignStage* stage = nullptr;  // of forms that are designed; null: each has a window by itself
};

class Program final : private ProgramServices {
 public:
  // `classes` outlives this. One program a thread, which has entered a single-threaded apartment.
  Program(ControlClasses& classes, ProgramOptions options);
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;
  ~Program();

  // Makes a form known; the first one is the one that is shown. Throws form::FileRefused for
  // references that lead nowhere and for a name that another form has.
  void Add(std::shared_ptr<const FormSource> source);
  // Makes those known that lie beside the forms and that code names, and what they name in turn.
  // Throws as Add, and form::FileRefused for one that cannot be read.
  void AddNamed();

  // Loads and shows the first form. Throws form::FileRefused when what it holds cannot be made.
  void Start();
  // Runs until the last form is unloaded or the program is ended.
  void Run();
  // Runs the loop until `done` gives true.
  void RunUntil(const std::function<bool()>& done);
  // True while a loop of the program runs, a modal form's too: the user can do something. May be
  // asked on any thread.
  bool IsWaiting() const noexcept { return loops_ > 0; }
  // Ends the loop; forms are unloaded when this object goes.
  void End();

  ControlClasses& classes() const noexcept { return classes_; }
  const ProgramOptions& options() const noexcept { return options_; }
  ScriptGlobals& globals() const noexcept { return *globals_; }
  const std::vector<Com<Form>>& forms() const noexcept { return forms_; }
  std::vector<HWND> Windows() const;  // of the forms that are loaded
  // Null if there is no such form.
  Form* FormNamed(std::wstring_view name) const noexcept;
  // The form in front, else the first.
  Form* ActiveForm() const noexcept;

  // Shows what code printed; standard output without one.
  void SetPrinter(std::function<void(const std::string& utf8)> printer);
  void PrintLine(const std::wstring& text) { Print(text, false); }

  // Is told what code or form failed with; standard error without one.
  void SetTeller(std::function<void(const std::string& utf8)> teller);

  // For forms.
  // Tells the user, one line; in a box of that style too where boxes are shown.
  void Tell(const std::string& text, UINT style);
  void OnFault(const Form& form, const ScriptFault& fault);
  void OnUnloaded();
  // Which form was active last.
  void OnActivated(const Form& form) noexcept { front_ = &form; }
  bool IsFront(const Form& form) const noexcept { return front_ == &form; }
  // How often code failed that nothing caught.
  int faults() const noexcept { return faults_; }
  // Where that was first: the form's file as it was given, and its line (0: not known).
  struct FaultPlace {
    std::string path;
    int line = 0;
  };
  const std::optional<FaultPlace>& firstFault() const noexcept { return firstFault_; }

 private:
  void Print(const std::wstring& text, bool openEnd) override;
  size_t PrintColumn() const override { return column_; }
  int ShowBox(const std::wstring& text, UINT style, const std::wstring& title) override;
  void LoadForm(const Variant& form) override;
  void UnloadForm(const Variant& form) override;
  void EndProgram() override { End(); }
  void DoEvents() override;
  std::wstring Folder() const override;
  std::wstring Title() const override;
  int MousePointer() const override { return mousePointer_; }
  void SetMousePointer(int pointer) override;

  void AddLibraries(const FormSource& source);
  void AddConstants();
  Form& FormOf(const Variant& value) const;
  void Dispatch(MSG& message);

  ControlClasses& classes_;
  ProgramOptions options_;
  Com<ScriptGlobals> globals_;
  std::vector<Com<Form>> forms_;
  const Form* front_ = nullptr;
  std::function<void(const std::string&)> printer_;
  std::function<void(const std::string&)> teller_;
  std::atomic<int> loops_ = 0;
  size_t column_ = 0;
  int mousePointer_ = 0;
  int faults_ = 0;
  std::optional<FaultPlace> firstFault_;
  bool ended_ = false;
};

}  // namespace qrn::host
