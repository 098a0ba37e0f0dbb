// What the commands of the designer's window do.
#include <algorithm>
#include <exception>

#include "host/container/Text.h"
#include "host/designer/model/Clipboard.h"
#include "host/designer/model/CodePart.h"
#include "host/designer/window/ClipboardText.h"
#include "host/designer/window/DesignWindow.h"
#include "host/designer/window/FileDialogs.h"
#include "host/designer/window/WindowTexts.h"
#include "host/designer/wizard/FormWizard.h"

namespace qrn::designer {
namespace {

using host::Wide;

constexpr int kWidthStep = 20;  // of the properties by a key; pixels of a screen with 96 an inch

template <auto Function, auto... Arguments>
Refusal OnSelection(DesignWindow& window) {
  Design& design = window.design();
  return Function(design, design.selection(), Arguments...);
}

}  // namespace

// One of both runs: what the model does with the selection, or the window's own.
struct DesignWindow::CommandRow {
  Command command;
  bool (DesignWindow::*can)() const;
  Refusal (*arrange)(DesignWindow& window);
  void (DesignWindow::*run)();
};

using W = DesignWindow;

// clang-format off
const DesignWindow::CommandRow DesignWindow::kCommands[] = {
    {kFileNew,        &W::Always,           nullptr, &W::OnNew},
    {kFileWizard,     &W::Always,           nullptr, &W::OnWizard},
    {kFileOpen,       &W::Always,           nullptr, &W::OnOpen},
    {kFileSave,       &W::Always,           nullptr, &W::OnSave},
    {kFileSaveAs,     &W::Always,           nullptr, &W::OnSaveAs},
    {kFileExit,       &W::Always,           nullptr, &W::OnExit},
    {kEditUndo,       &W::CanUndo,          nullptr, &W::OnUndo},
    {kEditRedo,       &W::CanRedo,          nullptr, &W::OnRedo},
    {kEditCut,        &W::HasSelection,     nullptr, &W::OnCut},
    {kEditCopy,       &W::HasSelection,     nullptr, &W::OnCopy},
    {kEditPaste,      &W::CanPaste,         nullptr, &W::OnPaste},
    {kEditDelete,     &W::HasSelection,     nullptr, &W::OnDelete},
    {kEditSelectAll,  &W::Always,           nullptr, &W::OnSelectAll},
    {kAlignLeft,      &W::HasTwo,           OnSelection<Align, Edge::Left>, nullptr},
    {kAlignCentre,    &W::HasTwo,           OnSelection<Align, Edge::Centre>, nullptr},
    {kAlignRight,     &W::HasTwo,           OnSelection<Align, Edge::Right>, nullptr},
    {kAlignTop,       &W::HasTwo,           OnSelection<Align, Edge::Top>, nullptr},
    {kAlignMiddle,    &W::HasTwo,           OnSelection<Align, Edge::Middle>, nullptr},
    {kAlignBottom,    &W::HasTwo,           OnSelection<Align, Edge::Bottom>, nullptr},
    {kAlignGrid,      &W::HasSelection,     [](W& w) { return AlignToGrid(w.design(), w.design().selection(), w.surface_->grid()); }, nullptr},
    {kSameWidth,      &W::HasTwo,           OnSelection<MakeSameSize, Alike::Width>, nullptr},
    {kSameHeight,     &W::HasTwo,           OnSelection<MakeSameSize, Alike::Height>, nullptr},
    {kSameBoth,       &W::HasTwo,           OnSelection<MakeSameSize, Alike::Both>, nullptr},
    {kSpaceAcross,    &W::HasThree,         OnSelection<SpaceEvenly, Direction::Across>, nullptr},
    {kSpaceDown,      &W::HasThree,         OnSelection<SpaceEvenly, Direction::Down>, nullptr},
    {kCentreAcross,   &W::HasSelection,     OnSelection<CentreInContainer, Direction::Across>, nullptr},
    {kCentreDown,     &W::HasSelection,     OnSelection<CentreInContainer, Direction::Down>, nullptr},
    {kToFront,        &W::HasSelection,     OnSelection<BringToFront>, nullptr},
    {kToBack,         &W::HasSelection,     OnSelection<SendToBack>, nullptr},
    {kTabOrder,       &W::Always,           nullptr, &W::OnTabOrderCommand},
    {kGridShown,      &W::Always,           nullptr, &W::OnGridShown},
    {kGridSnaps,      &W::Always,           nullptr, &W::OnGridSnaps},
    {kViewCode,       &W::Always,           nullptr, &W::OnViewCode},
    {kViewForm,       &W::Always,           nullptr, &W::OnViewForm},
    {kViewProperties, &W::Always,           nullptr, &W::OnViewProperties},
    {kViewToolbox,    &W::Always,           nullptr, &W::OnViewToolbox},
    {kViewPages,      &W::HasPagesSelected, nullptr, &W::OnViewPages},
    {kViewWider,      &W::Always,           nullptr, &W::OnViewWider},
    {kViewNarrower,   &W::Always,           nullptr, &W::OnViewNarrower},
    {kViewNextPane,   &W::Always,           nullptr, &W::TakeNextPane},
    {kRunStart,       &W::Always,           nullptr, &W::OnRunStart},
    {kHelpKeys,       &W::Always,           nullptr, &W::OnHelpKeys},
};
// clang-format on

bool DesignWindow::OnCommand(WORD command) {
  if (toolbox_->OnCommand(command)) return true;
  for (const CommandRow& row : kCommands) {
    if (row.command != command || !(this->*row.can)()) continue;
    design_->Seal();
    if (row.arrange) {
      Tell(row.arrange(*this));
    } else {
      (this->*row.run)();
    }
    return true;
  }
  return false;
}

void DesignWindow::PrepareMenu(HMENU menu) const {
  const auto name = [&](Command command) {
    if (command == kEditUndo) return Wide(design_->UndoName(options_.language));
    if (command == kEditRedo) return Wide(design_->RedoName(options_.language));
    return std::wstring();
  };
  for (const CommandRow& row : kCommands) {
    const UINT state = (this->*row.can)() ? MF_ENABLED : MF_GRAYED;
    if (EnableMenuItem(menu, row.command, MF_BYCOMMAND | state) == -1) continue;
    if (row.command == kEditUndo || row.command == kEditRedo) {
      ModifyMenuW(menu, row.command, MF_BYCOMMAND | MF_STRING | state, row.command,
                  ItemText(row.command, options_.language, name(row.command)).c_str());
    }
  }
  CheckMenuItem(menu, kGridShown, surface_->gridIsShown() ? MF_CHECKED : MF_UNCHECKED);
  CheckMenuItem(menu, kGridSnaps, surface_->grid().snaps ? MF_CHECKED : MF_UNCHECKED);
}

// A text that is being edited: what is cut, copied and pasted there is its own.
HWND DesignWindow::FocusedText() const noexcept {
  HWND focus = GetFocus();
  return focus && IsChild(window_, focus) && !IsOnForm(focus) ? focus : nullptr;
}

bool DesignWindow::HasSelection() const {
  const ControlId primary = design_->Primary();
  return FocusedText() || (primary != 0 && primary != design_->form());
}
bool DesignWindow::HasTwo() const { return design_->selection().size() >= 2; }
bool DesignWindow::HasThree() const { return design_->selection().size() >= 3; }
bool DesignWindow::CanUndo() const { return design_->CanUndo(); }
bool DesignWindow::CanRedo() const { return design_->CanRedo(); }
bool DesignWindow::CanPaste() const { return IsClipboardFormatAvailable(CF_UNICODETEXT) != FALSE; }
bool DesignWindow::HasPagesSelected() const {
  return design_->selection().size() == 1 && HasPages(design_->Primary());
}

void DesignWindow::OnNew() {
  if (AskToLeave()) Open({});
}

void DesignWindow::OnWizard() {
  if (!AskToLeave()) return;
  const auto made = RunFormWizard(window_, options_.language);
  if (made) OpenOrTell(made->file);
}

void DesignWindow::OnOpen() {
  if (!AskToLeave()) return;
  const auto path = AskFormToOpen(window_, options_.language);
  if (path) OpenOrTell(*path);
}

void DesignWindow::OpenOrTell(const std::string& path) {
  try {
    Open(path);
  } catch (const std::exception& error) {
    Box(Said(WindowText::CannotOpen, options_.language, {Wide(error.what())}),
        MB_OK | MB_ICONERROR);
  }
}

void DesignWindow::OnSave() {
  if (isNew_) return OnSaveAs();
  if (Settle()) SaveTo(path_);
}

void DesignWindow::OnSaveAs() {
  if (!Settle()) return;
  if (const auto path = AskWhereToSave(window_, options_.language, path_)) SaveTo(*path);
}

void DesignWindow::OnExit() {
  if (AskToLeave()) Quit();
}

void DesignWindow::OnUndo() {
  if (Settle()) design_->Undo();
}

void DesignWindow::OnRedo() {
  if (Settle()) design_->Redo();
}

void DesignWindow::OnCut() {
  if (HWND text = FocusedText()) return static_cast<void>(SendMessageW(text, WM_CUT, 0, 0));
  std::string controls;
  Refusal refusal = Cut(*design_, design_->selection(), &controls);
  if (!controls.empty()) PutClipboardText(window_, controls);
  Tell(refusal);
}

void DesignWindow::OnCopy() {
  if (HWND text = FocusedText()) return static_cast<void>(SendMessageW(text, WM_COPY, 0, 0));
  PutClipboardText(window_, CopyText(*design_, design_->selection()));
}

void DesignWindow::OnPaste() {
  if (HWND text = FocusedText()) return static_cast<void>(SendMessageW(text, WM_PASTE, 0, 0));
  Tell(Paste(*design_, ClipboardText(window_), surface_->grid()));
}

void DesignWindow::OnDelete() {
  if (HWND text = FocusedText()) return static_cast<void>(SendMessageW(text, WM_CLEAR, 0, 0));
  Tell(DeleteControls(*design_, design_->selection()));
}

void DesignWindow::OnSelectAll() {
  if (HWND text = FocusedText()) return static_cast<void>(SendMessageW(text, EM_SETSEL, 0, -1));
  SelectAll(*design_);
}

// Makes no procedure: who only looks changes nothing.
void DesignWindow::OnViewCode() { BringCode(); }

void DesignWindow::OnViewForm() {
  if (codeIsShown_ && !code_->Settle()) return;
  codeIsShown_ = false;
  Layout();
  SetFocus(surface_->Window());
}

void DesignWindow::OnViewProperties() { properties_->TakeFocus(); }

void DesignWindow::OnViewToolbox() { toolbox_->TakeFocus(); }

void DesignWindow::OnViewWider() { PutPropertiesWidth(propertiesWidth_ + Scaled(kWidthStep)); }

void DesignWindow::OnViewNarrower() { PutPropertiesWidth(propertiesWidth_ - Scaled(kWidthStep)); }

void DesignWindow::OnViewPages() { ShowPages(design_->Primary()); }

// From the form, or its code, to the properties, to the toolbox and back.
void DesignWindow::TakeNextPane() {
  HWND focus = GetFocus();
  const auto isIn = [focus](const Pane* pane) {
    return pane->Window() == focus || IsChild(pane->Window(), focus);
  };
  if (focus == toolbox_->Window()) {
    if (codeIsShown_) return code_->TakeFocus();
    SetFocus(surface_->Window());
  } else if (!isIn(properties_.get())) {
    properties_->TakeFocus();
  } else {
    toolbox_->TakeFocus();
  }
}

void DesignWindow::OnTabOrderCommand() { surface_->BeginTabOrder(); }
void DesignWindow::OnGridShown() { surface_->ShowGrid(!surface_->gridIsShown()); }
void DesignWindow::OnGridSnaps() { surface_->grid().snaps = !surface_->grid().snaps; }

void DesignWindow::OnHelpKeys() {
  Box(Said(WindowText::Keys, options_.language), MB_OK | MB_ICONINFORMATION);
}

void DesignWindow::OpenCode(ControlId control) {
  ShowCode(control, CodePart(*design_).UsualEvent(control));
}

void DesignWindow::BringCode() {
  codeIsShown_ = true;
  Layout();
  code_->TakeFocus();
}

void DesignWindow::ShowCode(ControlId control, const std::string& event) {
  BringCode();
  if (!event.empty()) code_->Go(CodePart(*design_).ObjectOf(control), event);
}

void DesignWindow::GoToLine(int fileLine) {
  const int line = CodePart(*design_).CodeLine(fileLine);
  if (line < 0) return;
  BringCode();
  code_->GoToLine(line);
}

void DesignWindow::OnContextMenu(POINT screen) {
  PrepareMenu(contextMenu_.get());
  const int command = TrackPopupMenu(contextMenu_.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, screen.x,
                                     screen.y, 0, window_, nullptr);
  if (command != 0) OnCommand(static_cast<WORD>(command));
}

void DesignWindow::OnToolDone() { toolbox_->TakePointer(); }

void DesignWindow::OnTabOrder(bool clicking) {
  clickingTabOrder_ = clicking;
  ShowStatus();
}

void DesignWindow::OnTool(const std::optional<Tool>& tool) {
  if (codeIsShown_) OnViewForm();
  surface_->TakeTool(tool);
}

void DesignWindow::OnToolToMiddle(const Tool& tool) { surface_->PutInMiddle(tool); }

}  // namespace qrn::designer
