// Which classes of a form file are furniture, and which are not to be had.
#include "host/form/SourceText.h"
#include "host/runner/Form.h"
#include "host/runner/HostedFormControl.h"
#include "host/runner/furniture/CommandButton.h"
#include "host/runner/furniture/Frame.h"
#include "host/runner/furniture/Label.h"
#include "host/runner/furniture/TextBox.h"

namespace qrn::host {
namespace {

template <class Piece>
Com<FormControl> MakePiece(Form& form, FormControl* container, const form::ControlNode& node) {
  return Com<FormControl>(MakeCom<Piece>(form, container, node).get());
}

struct PieceRow {
  const char* className;
  Com<FormControl> (*make)(Form& form, FormControl* container, const form::ControlNode& node);
};

constexpr PieceRow kPieces[] = {{"Label", MakePiece<Label>},
                                {"Frame", MakePiece<Frame>},
                                {"CommandButton", MakePiece<CommandButton>},
                                {"TextBox", MakePiece<TextBox>}};

struct RefusalRow {
  const char* className;
  const char* reason;
};

constexpr RefusalRow kRefusals[] = {
    {"Menu", "menus cannot be had: put buttons on the form"},
    {"Timer", "timers cannot be had: do the work in an event of a control"},
    {"PictureBox", "picture boxes cannot be had: use a Frame, or a picture control of a module"},
    {"Image", "images cannot be had: use a picture control of a module"},
    {"Data", "the Data control cannot be had: use a database control of a module"},
};

}  // namespace

Com<FormControl> MakeFormControl(Form& form, FormControl* container,
                                 const form::ControlNode& node) {
  if (!form::SameWord(node.library, "VB")) {
    return MakePiece<HostedFormControl>(form, container, node);
  }
  for (const PieceRow& row : kPieces) {
    if (form::SameWord(row.className, node.className)) return row.make(form, container, node);
  }
  for (const RefusalRow& row : kRefusals) {
    if (form::SameWord(row.className, node.className)) {
      throw ClassNotFound{node.name + ": " + row.reason};
    }
  }
  throw ClassNotFound{node.name + ": VB." + node.className +
                      " cannot be had; Label, Frame, CommandButton, TextBox and controls of "
                      "modules can"};
}

}  // namespace qrn::host
