// A key as users name it.
#pragma once

#include <cstddef>
#include <string>

#include "btrieve/keys/KeySpec.h"
#include "tools/qrndata/FileMatch.h"

namespace qrndata {

// A key by its name, its number, or the name of its first field: its slot in the table's keys.
// Throws Failure (kBadInput). `wanted` is UTF-8.
size_t ChooseKey(const Table& table, const std::string& wanted);

// That key in the file, whose dictionary may tell of fewer keys. Throws Failure (kSystem).
const btrieve::KeySpec& KeyInFile(const Table& table, size_t key, const btrieve::FileSpec& file,
                                  const FileMatch& match);

}  // namespace qrndata
