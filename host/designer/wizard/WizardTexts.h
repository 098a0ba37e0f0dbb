// What the wizard for a new form says, in both languages.
#pragma once

#include <string>
#include <vector>

#include "host/form/Language.h"

namespace qrn::designer {

using form::Language;

enum class WizardText {
  None,
  Title,
  Browse,
  DirectoryTitle,
  DirectoryHint,
  Directory,
  BrowseDirectory,
  NoDictionary,
  TableTitle,
  TableHint,
  Table,
  TableLine,
  FieldsTitle,
  FieldsHint,
  Fields,
  Up,
  Down,
  All,
  Nothing,
  NoField,
  KeysTitle,
  KeysHint,
  Keys,
  Detail,
  NoDetail,
  Grid,
  FileTitle,
  FileHint,
  File,
  FormFiles,
  Pictures,
  BrowsePictures,
  Speaks,
  Japanese,
  English,
  NoFile,
  Replace,
  kCount
};

// With the words in the places of %1, %2.
std::wstring Said(WizardText text, Language language, const std::vector<std::string>& words = {});

}  // namespace qrn::designer
