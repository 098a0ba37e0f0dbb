// What the designer's window says, in both of its languages.
#pragma once

#include <string>
#include <vector>

#include "host/form/Language.h"

namespace qrn::designer {

// A row of the table of texts; %1 stands for a word that differs.
enum class WindowText {
  Title,
  TitleNew,
  AskSave,
  FormFiles,
  AllFiles,
  CannotOpen,
  CannotSave,
  CannotShow,
  CannotRun,
  NoPages,
  FormSize,
  ControlPlace,
  SeveralSelected,
  TabOrderHelp,
  Pointer,
  Keys,
  kCount
};

std::wstring Said(WindowText text, form::Language language,
                  const std::vector<std::wstring>& words = {});

}  // namespace qrn::designer
