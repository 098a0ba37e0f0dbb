// The commands of the designer's window: their ids, their words in both languages, their keys, and
// the menus that offer them.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "com/Handles.h"
#include "host/form/Language.h"

namespace qrn::designer {

using form::Language;

enum Command : WORD {
  kFileNew = 0x1000,
  kFileWizard,
  kFileOpen,
  kFileSave,
  kFileSaveAs,
  kFileExit,
  kEditUndo,
  kEditRedo,
  kEditCut,
  kEditCopy,
  kEditPaste,
  kEditDelete,
  kEditSelectAll,
  kAlignLeft,
  kAlignCentre,
  kAlignRight,
  kAlignTop,
  kAlignMiddle,
  kAlignBottom,
  kAlignGrid,
  kSameWidth,
  kSameHeight,
  kSameBoth,
  kSpaceAcross,
  kSpaceDown,
  kCentreAcross,
  kCentreDown,
  kToFront,
  kToBack,
  kTabOrder,
  kGridShown,
  kGridSnaps,
  kViewCode,
  kViewForm,
  kViewProperties,
  kViewToolbox,
  kViewPages,
  kViewWider,
  kViewNarrower,
  kViewNextPane,
  kRunStart,
  kHelpKeys,
  kLastCommand,
};
inline constexpr WORD kFirstTool = 0x2000;  // and one more for each tool of the toolbox

using Accelerators = com::Held<HACCEL, &DestroyAcceleratorTable>;

com::Menu MakeMenuBar(Language language);
// What the right button offers on the form.
com::Menu MakeContextMenu(Language language);

// Keys that mean the same wherever the keyboard is, and those of the form: elsewhere they belong to
// the text that is being edited.
Accelerators MakeGlobalKeys();
Accelerators MakeFormKeys();

// The words of a command's menu item without its key, `&` before its letter.
std::wstring WordsOf(Command command, Language language);
// The same with what a step is called, and the key: "元に戻す: 移動(&U)\tCtrl+Z".
std::wstring ItemText(Command command, Language language, const std::wstring& step = {});

}  // namespace qrn::designer
