// A database made from a schema, for `build` and programs that fill one.
#pragma once

#include <filesystem>
#include <string_view>

#include "tools/qrndata/Schema.h"

namespace qrndata {

enum class Existing {
  Refuse,    // any file that is there already is a failure
  Replace,   // dictionary and data files are made anew
  KeepData,  // the dictionary is made anew, data files that are there stay; whether they fit it is
             // the caller's care
};

// Throws Failure. `advice` goes behind the message about a file that is there already.
void BuildDatabase(const Schema& schema, const std::filesystem::path& directory, Existing existing,
                   std::string_view advice = {});

}  // namespace qrndata
