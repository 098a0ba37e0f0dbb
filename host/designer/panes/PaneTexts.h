// What the panes say, in both languages.
#pragma once

#include <string>
#include <vector>

#include "host/form/Language.h"

namespace qrn::designer {

using form::Language;

enum class PaneText {
  CustomRow,
  CustomHint,
  NotOne,
  ResetValue,
  NextValue,
  OpenDialog,
  AskPicture,
  PictureFiles,
  AllFiles,
  NoPicture,
  LineAndColumn,
  OneMistake,
  Mistakes,
  NotInDesign,
  NotFound,
  GeneralObject,
  kCount
};

// UTF-8; %1 ... stand for the words.
std::string Said(PaneText text, Language language, const std::vector<std::string>& words = {});

}  // namespace qrn::designer
