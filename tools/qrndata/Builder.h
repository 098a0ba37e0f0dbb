// A database made from a schema, for `build` and `generate`.
#pragma once

#include <filesystem>

#include "tools/qrndata/Schema.h"

namespace qrndata {

enum class Existing {
  Refuse,    // any file that is there already is a failure
  Replace,   // dictionary and data files are made anew
  KeepData,  // the dictionary is made anew, data files that are there stay
};

// Throws Failure.
void BuildDatabase(const Schema& schema, const std::filesystem::path& directory, Existing existing);

}  // namespace qrndata
