// What the designer says, in both of its languages: names of steps for the menu's undo and redo,
// and reasons of refusals.
#pragma once

#include <string>
#include <vector>

#include "host/form/Language.h"

namespace qrn::designer {

using form::Language;

// A row of the table of texts; %1 and %2 stand for words that differ.
enum class TextId {
  // Steps.
  AddControl,
  DeleteControls,
  MoveControls,
  SizeControls,
  AlignControls,
  SizeAlike,
  SpaceEvenly,
  BringToFront,
  SendToBack,
  ChangeTabOrder,
  MoveInto,
  CutControls,
  PasteControls,
  ChangeProperty,
  ChangeCode,
  AddProcedure,
  RenameControl,
  SizeForm,
  // Refusals.
  NameMissing,
  NameNoName,
  NameTooLong,
  NameReserved,
  NameTaken,
  ArrayNeedsIndex,
  IndexTaken,
  IndexRange,
  NotWritable,
  WholeExpected,
  RangeExpected,
  NumberExpected,
  TruthExpected,
  ColourExpected,
  ChoiceExpected,
  SetByDialog,
  ReadOnly,
  TextTooLong,
  CompanionMissing,
  NoControlsInText,
  TextUnreadable,
  ContainerExpected,
  NoSuchProperty,
  NoSuchEvent,
  PictureMissing,
  kCount
};

// UTF-8.
std::string Said(TextId text, Language language, const std::vector<std::string>& words = {});

// A text with its words, told in the user's language when it is shown.
struct Message {
  TextId text;
  std::vector<std::string> words;

  std::string In(Language language) const { return Said(text, language, words); }
};

}  // namespace qrn::designer
