// The designer's window: menus, toolbox, the surface with the form or the code in its place, the
// properties beside it. It opens, saves and runs the form.
#pragma once

#include <windows.h>

#include <array>
#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "host/designer/classes/ModuleClassSource.h"
#include "host/designer/panes/CodePane.h"
#include "host/designer/panes/LiveOffers.h"
#include "host/designer/panes/PropertyPane.h"
#include "host/designer/window/Commands.h"
#include "host/designer/window/Splitter.h"
#include "host/designer/window/Surface.h"
#include "host/designer/window/Toolbox.h"

namespace qrn::designer {

struct DesignWindowOptions {
  Language language = Language::Japanese;
  // Failures of code that runs are shown in a box besides being written to standard error.
  bool boxes = true;
};

class DesignWindow final : private Workplace, private SurfaceOwner, private ToolboxOwner {
 public:
  // `classes` outlives the window. One on a thread that has entered a single-threaded apartment.
  DesignWindow(host::ControlClasses& classes, DesignWindowOptions options);
  DesignWindow(const DesignWindow&) = delete;
  DesignWindow& operator=(const DesignWindow&) = delete;
  ~DesignWindow() override;

  // Opens a form's file; an empty path makes a new form. Throws form::FileRefused and
  // std::runtime_error as OpenStoredForm does; what was open stays then.
  void Open(const std::string& path);
  // Shows what code of a form that runs has printed; standard output without one.
  void SetPrinter(std::function<void(const std::string& utf8)> printer) {
    printer_ = std::move(printer);
  }
  // Shows the window and runs until it is closed.
  void Run();
  // The same in parts, for who reads the thread's messages: each goes here.
  void Show();
  void Take(MSG& message);
  // Closes without asking; a form that runs is ended.
  void Quit();

  // True while the user can do something. May be asked on any thread.
  bool IsWaiting() const noexcept { return loops_ > 0; }
  // The program of the form that runs, else of the form that is designed.
  host::Program* program() const noexcept { return running_ ? running_ : surface_->program(); }
  bool IsRunning() const noexcept { return running_ != nullptr; }
  HWND Frame() const override { return window_; }
  Design& design() override { return *design_; }
  const Surface& surface() const noexcept { return *surface_; }
  const Toolbox& toolbox() const noexcept { return *toolbox_; }
  PropertyPane& properties() noexcept { return *properties_; }
  const std::string& path() const noexcept { return path_; }

 private:
  struct CommandRow;
  static const CommandRow kCommands[];
  struct MessageRow;
  static const MessageRow kMessages[];

  // Workplace.
  const NameOffers& offers() override { return *offers_; }
  Language language() const override { return options_.language; }
  HFONT Font() const override { return font_.get(); }
  void Tell(const Refusal& refusal) override;
  void Tell(const std::string& text) override;
  bool HasPages(ControlId control) const override;
  void ShowPages(ControlId control) override;
  void ShowCode(ControlId control, const std::string& event) override;

  // SurfaceOwner and ToolboxOwner.
  void OnCannotShow(const std::string& reason) override;
  void OpenCode(ControlId control) override;
  void OnContextMenu(POINT screen) override;
  void OnToolDone() override;
  void OnTabOrder(bool clicking) override;
  void OnTool(const std::optional<Tool>& tool) override;
  void OnToolToMiddle(const Tool& tool) override;

  void MakeWindow();
  void MakePanes();
  void Layout();
  // In pixels; as much as leaves something of the form.
  void PutPropertiesWidth(int width);
  std::array<Pane*, 2> Panes() const { return {properties_.get(), code_.get()}; }
  void ShowTitle();
  void ShowStatus();
  std::wstring Status() const;
  std::wstring FileName() const;

  void TakeForm(StoredForm stored, const std::string& path);
  void AddLibraries(const FormDocument& document);
  void OnDesignChanged(const ChangeReport& report);
  bool Settle();
  bool SaveTo(const std::string& path);
  bool AskToLeave();
  int Box(const std::wstring& text, UINT style) const;

  bool PreTranslate(MSG& message);
  bool IsOnForm(HWND focus) const noexcept;
  HWND FocusedText() const noexcept;
  bool OnCommand(WORD command);
  void PrepareMenu(HMENU menu) const;
  void BringCode();
  void GoToLine(int fileLine);
  void TakeNextPane();

  // Commands.
  bool Always() const { return true; }
  bool HasSelection() const;
  bool HasTwo() const;
  bool HasThree() const;
  bool CanUndo() const;
  bool CanRedo() const;
  bool CanPaste() const;
  bool HasPagesSelected() const;
  void OnNew();
  void OnWizard();
  void OnOpen();
  void OpenOrTell(const std::string& path);
  void OnSave();
  void OnSaveAs();
  void OnExit();
  void OnUndo();
  void OnRedo();
  void OnCut();
  void OnCopy();
  void OnPaste();
  void OnDelete();
  void OnSelectAll();
  void OnViewCode();
  void OnViewForm();
  void OnViewProperties();
  void OnViewToolbox();
  void OnViewPages();
  void OnViewWider();
  void OnViewNarrower();
  void OnTabOrderCommand();
  void OnGridShown();
  void OnGridSnaps();
  void OnRunStart();
  void OnHelpKeys();

  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  host::ControlClasses& classes_;
  ModuleClassSource source_;
  DesignWindowOptions options_;
  com::GdiFont font_;
  com::Menu contextMenu_;
  Accelerators globalKeys_;
  Accelerators formKeys_;
  HWND window_ = nullptr;
  HWND status_ = nullptr;
  HWND lastFocus_ = nullptr;
  std::unique_ptr<Design> design_;
  std::string path_;   // where the form's file is or would be
  bool isNew_ = true;  // it was never saved
  std::unique_ptr<Toolbox> toolbox_;
  std::unique_ptr<Surface> surface_;
  std::unique_ptr<LiveOffers> offers_;
  std::unique_ptr<PropertyPane> properties_;
  std::unique_ptr<CodePane> code_;
  std::unique_ptr<Splitter> splitter_;
  int propertiesWidth_;  // pixels
  bool codeIsShown_ = false;
  bool clickingTabOrder_ = false;
  std::function<void(const std::string&)> printer_;
  host::Program* running_ = nullptr;
  std::atomic<int> loops_ = 0;
  bool closed_ = false;
};

}  // namespace qrn::designer
